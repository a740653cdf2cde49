// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace predicate {

// Conversions replace what is ill-formed by U+FFFD.
std::u16string utf16(std::string_view utf8);
std::string utf8(std::u16string_view utf16);
void utf16Into(std::string_view utf8, std::u16string& out);
void appendUtf8(std::string& out, char32_t character);

/// The character at `index`, which moves behind it.
char32_t nextCharacter(std::string_view utf8, std::size_t& index);

/// The number of UTF-16 units that a UTF-8 text takes.
std::size_t utf16Length(std::string_view utf8);

/// Negative, 0 or positive in the order of UTF-16 units, which for characters beyond U+FFFF
/// is not the order of the bytes.
int compareUtf16Order(std::string_view left, std::string_view right);

bool isAscii(std::string_view text);

/// What may stand between tokens.
constexpr std::u16string_view blanks = u"\t\n\v\f\r ";

constexpr bool isAsciiDigit(char32_t c)
{
    return c >= U'0' && c <= U'9';
}
constexpr bool isAsciiLetter(char32_t c)
{
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
}
constexpr bool isWordStart(char32_t c)
{
    return isAsciiLetter(c) || c == U'_';
}
constexpr bool isWordPart(char32_t c)
{
    return isWordStart(c) || isAsciiDigit(c);
}
template <typename Character>
constexpr Character asciiLower(Character c)
{
    return c >= Character('A') && c <= Character('Z') ? static_cast<Character>(c + ('a' - 'A')) : c;
}

/// The text with its ASCII letters in lower case.
template <typename Text>
auto lowered(Text text)
{
    std::basic_string<typename Text::value_type> out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](auto c) { return asciiLower(c); });
    return out;
}

/// Of ASCII letters only.
template <typename Text>
bool equalIgnoringCase(Text left, Text right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](auto a, auto b) { return asciiLower(a) == asciiLower(b); });
}

} // namespace predicate
