// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace predicate {

/// A piece of the format text in typographic quotation marks, shortened if it is long.
std::string quoted(std::u16string_view piece);
std::string quoted(std::string_view piece);

/// The piece without quotation marks. Each run of blanks and line breaks becomes one blank.
std::string shortened(std::u16string_view piece);

/// “a, b or c”, without the marks.
std::string alternatives(const std::vector<std::string_view>& names);

/// The candidate that differs from the word only by case or by one or two letters, or an empty
/// text.
std::string_view nearest(std::string_view word, const std::vector<std::string_view>& candidates);

} // namespace predicate
