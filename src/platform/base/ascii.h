// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// Letters, digits and their case in ASCII, the same in every locale. Characters may be of any type.

constexpr std::u16string_view asciiBlanks = u"\t\n\v\f\r ";

constexpr bool isAsciiDigit(char32_t c)
{
    return c >= U'0' && c <= U'9';
}

constexpr bool isAsciiLetter(char32_t c)
{
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
}

template <typename Character>
constexpr Character asciiLower(Character c)
{
    return c >= Character('A') && c <= Character('Z') ? static_cast<Character>(c + ('a' - 'A')) : c;
}

/// The text with its ASCII letters in lower case.
template <typename Text>
auto asciiLowered(Text text)
{
    std::basic_string<typename Text::value_type> out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](auto c) { return asciiLower(c); });
    return out;
}

/// Whether the texts are equal when the case of ASCII letters does not count.
template <typename Text>
bool equalIgnoringAsciiCase(Text left, Text right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](auto a, auto b) { return asciiLower(a) == asciiLower(b); });
}
