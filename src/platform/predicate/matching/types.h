// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace predicate {

/// The set of types that the value of an expression can have, one bit for each. Any expression can
/// be nil; the empty set is the type of nil itself.
using Types = std::uint16_t;

namespace type {
constexpr Types nil = 0;
constexpr Types integer = 1;
constexpr Types real = 2;
constexpr Types text = 4;
constexpr Types uuid = 8; ///< a text whose comparisons ignore case
constexpr Types date = 16;
constexpr Types list = 32;
constexpr Types entry = 64;
constexpr Types logType = 128;
constexpr Types level = 256;
constexpr Types eventType = 512;
constexpr Types signpostType = 1024;
constexpr Types signpostScope = 2048;

constexpr Types symbolic = logType | level | eventType | signpostType | signpostScope;
constexpr Types wholeNumber = integer | symbolic;
constexpr Types number = wholeNumber | real;
constexpr Types anyText = text | uuid;
constexpr Types scalar = number | anyText | date;
} // namespace type

/// What is known about an expression before it is evaluated.
struct Type
{
    Types types = type::nil;
    Types elements = type::nil;       ///< the types of all elements of a list
    std::optional<std::size_t> count; ///< the length of a list, if known

    bool fits(Types wanted) const { return types == type::nil || (types & wanted) != 0; }
    bool isText() const { return types != type::nil && (types & ~type::anyText) == 0; }
    bool isList() const { return (types & type::list) != 0; }
    /// The types of the elements for a list, else the types themselves.
    Types compared() const { return isList() ? elements : types; }
};

/// “a number”, “a text”, …
std::string described(Types types);

} // namespace predicate
