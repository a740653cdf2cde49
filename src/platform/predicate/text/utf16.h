// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace predicate {

// Conversions replace ill-formed parts by U+FFFD.
std::u16string utf16(std::string_view utf8);
std::string utf8(std::u16string_view utf16);
void utf16Into(std::string_view utf8, std::u16string& out);

/// The number of UTF-16 units of a UTF-8 text.
std::size_t utf16Length(std::string_view utf8);

/// Negative, 0 or positive in the order of UTF-16 units, which for characters beyond U+FFFF
/// is not the order of the bytes.
int compareUtf16Order(std::string_view left, std::string_view right);

} // namespace predicate
