// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/items.h"

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

/// Wall-clock time in the user's zone, with the zone's offset at that time:
/// 2016-01-12 19:41:37.774236+0100. `fraction` is written after the seconds. Nothing when the year
/// does not fit 32 bits.
void appendLocalTime(std::string& out,
                     std::int64_t secondsSince1970,
                     std::string_view fraction = {});

/// The text of a text, object, wide text or bytes, of at most `limit` bytes (wide text is not
/// limited). One that was cut when it was stored ends with a mark, unless the limit cuts it, too.
void appendItemText(std::string& out, const Item& item, std::size_t limit = std::string_view::npos);

constexpr std::string_view unsupportedValue = "<decode: unsupported value>";

/// What stands for a number that has no name.
void appendUnknownValue(std::string& out, std::int64_t number);

/// What stands for an item that is not of the kind its conversion is for; `conversion` as written.
void appendMismatch(std::string& out, std::string_view conversion, const Item& item);

} // namespace logstore
