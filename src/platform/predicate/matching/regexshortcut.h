// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/value.h"
#include "platform/predicate/text/textpattern.h"

#include <string_view>
#include <vector>

namespace predicate {

/// Answers by searches for plain texts what a regular expression need not be asked.
class RegexShortcut
{
public:
    RegexShortcut(std::string_view expression, Folding folding);

    /// Whether the expression matches the text; unknown when only the expression itself can tell.
    Truth matches(std::string_view text, FoldedTexts& folds) const;

private:
    Folding m_folding;
    bool m_matchesAll = false;
    bool m_formsAreAscii = true;
    std::vector<TextPattern> m_forms; ///< when there are any, the expression matches no other text
    std::vector<ByteFinder> m_required; ///< when there are any, a text that matches has one of them
};

} // namespace predicate
