// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/terms.h"
#include "platform/predicate/text/datetext.h"

#include <string_view>

namespace predicate {

/// A function that predicates can call by name.
struct FunctionInfo
{
    std::string_view name;
    std::size_t count = 0;      ///< number of arguments; 0 for one list or any number
    Types argument = type::nil; ///< type of each argument or element
    Types result = type::nil;
    Value (*call)(std::span<const Value> arguments, Match& match) = nullptr;

    bool takesList() const { return count == 0; }
};

/// Null when there is no function of this name.
const FunctionInfo* functionNamed(std::string_view name);
std::string_view suggestedFunction(std::string_view name);

// The casts. A value that cannot be converted gives nil.
Value castToDate(const Value& value, const UtcOffset& utcOffset);
Value castToNumber(const Value& value);
Value castToText(const Value& value, Match& match);

/// The length in UTF-16 units.
Value textLength(const Value& text);

} // namespace predicate
