// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <string>
#include <string_view>

namespace logstore {

/// The bytes up to the first zero byte, or all of them.
std::string_view cString(Bytes bytes);

/// True when `text` is ASCII or well-formed UTF-8.
bool isValidUtf8(std::string_view text);

/// How many bytes at the end begin a character without completing it.
std::size_t incompleteTail(std::string_view text);

/// Appends `text` with each maximal ill-formed part replaced by U+FFFD.
void appendUtf8(std::string& out, std::string_view text);

/// Appends one code point; those that are none (surrogates, above U+10FFFF) as U+FFFD.
void appendCodePoint(std::string& out, std::uint32_t codePoint);

/// Appends UTF-32 text up to the first zero.
void appendUtf32(std::string& out, Bytes bytes);

/// One code point at the front of well-formed `text`, and how many bytes it takes.
struct DecodedCodePoint
{
    std::uint32_t value;
    std::size_t length;
};
DecodedCodePoint decodeFront(std::string_view text);

} // namespace logstore
