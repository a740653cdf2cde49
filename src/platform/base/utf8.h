// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Each maximal ill-formed part of a text is read as one U+FFFD.

bool isAscii(std::string_view text);

/// True when the text is ASCII or well-formed UTF-8.
bool isValidUtf8(std::string_view text);

/// The number of bytes at the end that begin a character without completing it.
std::size_t incompleteTail(std::string_view text);

/// The character at `index`, which moves to the next one. `index` is below the size.
char32_t nextCharacter(std::string_view text, std::size_t& index);

/// Appends the text as well-formed UTF-8.
void appendUtf8(std::string& out, std::string_view text);

/// Appends one code point, or U+FFFD for surrogates and what lies above U+10FFFF.
void appendCodePoint(std::string& out, char32_t codePoint);
