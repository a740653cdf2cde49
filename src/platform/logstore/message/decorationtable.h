// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/items.h"

#include <string>
#include <string_view>

namespace logstore {

/// An argument to be shown: the item, and whether its conversion takes numbers as signed ones.
struct Argument
{
    const Item& item;
    bool isSigned;

    Bytes bytes() const { return item.bytes; }
    /// The number in 64 bits.
    std::uint64_t widened() const
    {
        return isSigned ? static_cast<std::uint64_t>(signedValue(bytes())) : unsignedValue(bytes());
    }
};

/// The arguments that a decoration takes. What a decoration of the system does not take is shown as
/// a mismatch; what one of a framework does not take, as the conversion's letter shows it.
enum class Takes : std::uint8_t {
    SystemNumber,  ///< a number with a letter for integers
    SystemData,    ///< bytes with the letter P
    SystemAddress, ///< either of them
    Number,
    Text,
    AnyBytes ///< the bytes of any argument
};

/// A word between the braces of a conversion that says what its argument is.
struct Decoration
{
    static constexpr std::uint8_t anySize = 0;
    static constexpr std::uint8_t usualSizes = 1 + 2 + 4 + 8;

    std::string_view name;
    Takes takes;
    /// Appends the argument; returns false, having appended nothing, when its size or shape is none
    /// that the decoration stands for.
    bool (*append)(std::string& out, const Argument& argument);
    std::uint8_t sizes = usualSizes; ///< of a SystemNumber: those it may have, added up
};

/// The decoration of that name, compared with case, or null.
const Decoration* decorationNamed(std::string_view name);

} // namespace logstore
