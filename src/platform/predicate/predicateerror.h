// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace predicate {

enum class Stage { Parse, Bind };

/// Why a text is not a valid predicate: a sentence for people, and the place of the error.
struct PredicateError
{
    Stage stage = Stage::Parse;
    std::size_t position = 0; ///< in UTF-16 units of the format text
    std::string sentence;     ///< UTF-8
};

/// The text of an alert: the sentence, the line of the format text with the error, and a caret
/// below the position, which fits in a fixed-width font. Of a long line only the part around the
/// position is shown.
std::string alertText(const PredicateError& error, std::string_view formatText);

} // namespace predicate
