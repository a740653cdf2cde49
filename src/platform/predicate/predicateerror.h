// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace predicate {

enum class Stage { Parse, Bind };

/// Why a text is not a predicate, as one sentence for people, and the place it speaks of.
struct PredicateError
{
    Stage stage = Stage::Parse;
    std::size_t position = 0; ///< in UTF-16 units of the format text
    std::string sentence;     ///< UTF-8
};

/// The text of an alert: the sentence, then the line of the format text that holds the position and
/// below it a caret. The caret stands right in a font of equal widths; a long line is cut to the
/// neighbourhood of the position.
std::string alertText(const PredicateError& error, std::string_view formatText);

} // namespace predicate
