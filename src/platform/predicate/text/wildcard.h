// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/text/textfolding.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace predicate {

/// The pattern of LIKE: `*` any characters, `?` one, a backslash makes the next character plain.
class Wildcard
{
public:
    Wildcard(std::string_view pattern, Folding folding);

    /// The text must have the folding of the pattern.
    bool matches(std::string_view foldedText) const;

    /// A pattern that is a plain text, with an optional star before or after it.
    struct Plain
    {
        std::string text; ///< not folded
        bool starBefore = false;
        bool starAfter = false;
    };
    static std::optional<Plain> plain(std::string_view pattern);

private:
    /// The part between two stars: texts, with a question mark between each two.
    using Piece = std::vector<std::string>;

    static std::optional<std::size_t>
    matchForward(const Piece& piece, std::string_view text, std::size_t start);
    static std::optional<std::size_t> matchBackward(const Piece& piece, std::string_view text);
    static std::optional<std::size_t>
    find(const Piece& piece, std::string_view text, std::size_t start);

    std::vector<Piece> m_pieces; ///< at least one; a star between each two
};

} // namespace predicate
