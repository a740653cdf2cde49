// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace predicate {

struct Nil
{
    bool operator==(const Nil&) const { return true; }
};

struct Date
{
    std::int64_t nanoseconds = 0; ///< since 1970-01-01 UTC
    bool operator==(const Date& other) const { return nanoseconds == other.nanoseconds; }
};

/// A value that is written in a predicate, or given for one of its format arguments.
/// Texts are UTF-8. Integers are unsigned only above the signed range.
struct Constant
{
    using List = std::vector<Constant>;

    std::variant<Nil, bool, std::int64_t, std::uint64_t, double, std::string, Date, List> value;

    bool operator==(const Constant& other) const { return value == other.value; }
};

using Arguments = std::vector<Constant>;

} // namespace predicate
