// SPDX-License-Identifier: MIT
#include "platform/logstore/uuid.h"

namespace logstore {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::string Uuid::text() const
{
    std::string out;
    out.reserve(36);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            out += '-';
        out += hexDigits[bytes[i] >> 4];
        out += hexDigits[bytes[i] & 15];
    }
    return out;
}

std::optional<Uuid> Uuid::fromText(std::string_view text)
{
    Uuid uuid;
    std::size_t digits = 0;
    for (const char c : text) {
        if (c == '-')
            continue;
        const int value = hexValue(c);
        if (value < 0 || digits == 32)
            return std::nullopt;
        auto& byte = uuid.bytes[digits / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
        ++digits;
    }
    if (digits != 32)
        return std::nullopt;
    return uuid;
}

} // namespace logstore
