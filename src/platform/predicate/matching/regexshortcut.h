// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/value.h"
#include "platform/predicate/text/textpattern.h"

#include <string_view>
#include <vector>

namespace predicate {

/// Searches for the plain texts of a regular expression, which is faster than matching it.
class RegexShortcut
{
public:
    RegexShortcut(std::string_view expression, Folding folding);

    /// Whether the expression matches the text. Unknown: the expression itself has to be tried.
    Truth matches(std::string_view text, FoldedTexts& folds) const;

private:
    Folding m_folding;
    bool m_matchesAll = false;
    bool m_formsAreAscii = true;
    std::vector<TextPattern> m_forms;   ///< if not empty, only these texts match
    std::vector<ByteFinder> m_required; ///< if not empty, each match contains one
};

} // namespace predicate
