// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/bytefinder.h"
#include "platform/predicate/text/textfolding.h"
#include "platform/predicate/text/wildcard.h"

#include <optional>
#include <string>
#include <string_view>

namespace predicate {

/// Relations of a text to another. None but Equal and Like holds for an empty second text.
enum class TextRelation : std::uint8_t { Equal, Contains, BeginsWith, EndsWith, Like };

/// A constant text, prepared for comparisons with many others.
class TextPattern
{
public:
    TextPattern(TextRelation relation, std::string_view pattern, Folding folding);

    bool matches(std::string_view text, FoldedTexts& folds) const;

private:
    bool standsIn(std::string_view text) const;
    bool mayFoldToAscii(std::string_view text) const;

    TextRelation m_relation;
    Folding m_folding;
    std::string m_pattern; ///< folded
    ByteFinder m_finder;
    bool m_ascii;     ///< whether the folded pattern is ASCII
    bool m_needsFold; ///< it has k or s, to which letters beyond ASCII fold
    std::optional<Wildcard> m_wildcard;
};

/// The same for two texts of which none is constant.
bool relates(TextRelation relation,
             std::string_view left,
             std::string_view right,
             Folding folding,
             FoldedTexts& folds);

} // namespace predicate
