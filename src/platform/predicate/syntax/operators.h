// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace predicate {

enum class Operator : std::uint8_t {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    In,
    Contains,
    BeginsWith,
    EndsWith,
    Like,
    Matches,
    Between,
    UtiConformsTo,
    UtiEquals
};

/// Whether the operator searches a list or a text for the other side.
constexpr bool looksInside(Operator comparison)
{
    return comparison == Operator::In || comparison == Operator::Contains;
}

enum class Quantifier : std::uint8_t { One, Any, All, None };

/// The option letters in brackets after an operator.
struct Options
{
    bool caseless = false;   ///< c
    bool markless = false;   ///< d
    bool normalized = false; ///< n: the texts are normalised already, c and d have no effect
    bool localized = false;  ///< l

    bool operator==(const Options& other) const
    {
        return caseless == other.caseless && markless == other.markless
               && normalized == other.normalized && localized == other.localized;
    }
};

std::string_view spelling(Operator comparison);
std::string_view spelling(Quantifier quantifier);
/// `[cd]`, or nothing when there are none.
std::string spelling(Options options);

} // namespace predicate
