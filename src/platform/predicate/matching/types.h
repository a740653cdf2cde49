// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace predicate {

/// The types that the value of an expression can have, as a set of bits. Any expression can be nil;
/// the empty set is that of nil itself.
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

/// What is known of an expression before it meets an entry.
struct Type
{
    Types types = type::nil;
    Types elements = type::nil;       ///< of a list: the types of its elements taken together
    std::optional<std::size_t> count; ///< of a list whose length is known

    bool fits(Types wanted) const { return types == type::nil || (types & wanted) != 0; }
    bool isText() const { return types != type::nil && (types & ~type::anyText) == 0; }
    bool isList() const { return (types & type::list) != 0; }
    /// Of a list its elements' types, else its own.
    Types compared() const { return isList() ? elements : types; }
};

/// “a number”, “a text”, …
std::string described(Types types);

} // namespace predicate
