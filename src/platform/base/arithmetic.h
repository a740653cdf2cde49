// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

__extension__ using Int128 = __int128;

/// The value, limited to the range of 64 bits.
constexpr std::int64_t saturated(Int128 value)
{
    constexpr std::int64_t low = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t high = std::numeric_limits<std::int64_t>::max();
    return value < low ? low : value > high ? high : static_cast<std::int64_t>(value);
}

constexpr std::uint64_t saturatingAdd(std::uint64_t a, std::uint64_t b)
{
    return a > UINT64_MAX - b ? UINT64_MAX : a + b;
}
