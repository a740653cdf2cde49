// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <charconv>
#include <string>
#include <string_view>

namespace logstore {

template <typename Integer>
void appendDecimal(std::string& out, Integer value)
{
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

/// Two digits a byte, without separators.
void appendHex(std::string& out, Bytes bytes, bool upperCase);

void appendBase64(std::string& out, Bytes bytes);

/// As printf in the C locale, whatever the process's own locale is.
[[gnu::format(printf, 2, 3)]] void appendFormatted(std::string& out, const char* format, ...);

/// The shortest decimal text that reads back to the same value; integral values below 10^16 without
/// a point, exponents as in 1e-05.
void appendShortest(std::string& out, double value);

/// Wall-clock time in the user's zone, as 2016-01-12 19:41:37. False, with nothing written, for a
/// time that no calendar year can hold.
bool appendLocalTime(std::string& out, std::int64_t secondsSince1970);

constexpr std::string_view unsupportedValue = "<decode: unsupported value>";

/// What stands for a number that has no name.
void appendUnknownValue(std::string& out, std::int64_t number);

} // namespace logstore
