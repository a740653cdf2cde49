// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/items.h"

#include <string>
#include <string_view>

namespace logstore {

struct Decoration;

/// What the words between the braces of a conversion ask for.
struct Decorations
{
    /// The decoration that counts: the last one that is not about privacy, masks or signposts. None
    /// when there is none, or when it is not known.
    const Decoration* decoration = nullptr;
    bool masked = false; ///< has a "mask.…" decoration

    /// The parts of "signpost.telemetry:KEY"; empty for arguments that are no signpost's value.
    std::string_view signpostLabel;
    std::string_view signpostKey;

    /// `words`: what stands between the braces. The texts refer to it. Names are compared with
    /// case; a "builtin:" in front does not count.
    static Decorations parse(std::string_view words);
};

enum class DecorationResult : std::uint8_t {
    Written,
    NotDecorated, ///< to be shown as the conversion's letter shows it
    Mismatch,     ///< not what the decoration stands for
    Unsupported,  ///< a size or shape that the decoration has no text for
};

/// Appends the argument as the decoration shows it, or nothing unless the result is Written.
/// `letter` is that of the conversion.
DecorationResult
appendDecorated(std::string& out, const Decoration& decoration, char letter, const Item& item);

} // namespace logstore
