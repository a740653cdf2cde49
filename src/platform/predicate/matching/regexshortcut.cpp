// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/regexshortcut.h"

#include "platform/base/utf8.h"
#include "platform/predicate/text/regexliterals.h"

#include <algorithm>
#include <array>

namespace predicate {

namespace {

TextRelation relationOf(const PlainForm& form)
{
    if (form.anyBefore)
        return form.anyAfter ? TextRelation::Contains : TextRelation::EndsWith;
    return form.anyAfter ? TextRelation::BeginsWith : TextRelation::Equal;
}

/// The longest run of ASCII characters.
std::string_view asciiRun(std::string_view text)
{
    std::string_view longest;
    for (std::size_t start = 0; start < text.size(); ++start) {
        std::size_t end = start;
        while (end < text.size() && isAscii(text.substr(end, 1)))
            ++end;
        if (end - start > longest.size())
            longest = text.substr(start, end - start);
        start = end;
    }
    return longest;
}

/// Whether the text may have a character that ICU folds to ASCII letters, such as ß to ss and ﬁ to
/// fi. Comparisons of texts fold each character to one character, and do not find these.
bool mayFoldToAscii(std::string_view text)
{
    if (isAscii(text))
        return false;
    // ß, İ, ŉ, ſ and ǰ; the blocks of ẖ to ẞ, of the Kelvin sign and of the ligatures.
    constexpr std::array<std::string_view, 8> starts = {
        "\u00DF", "\u0130", "\u0149", "\u017F", "\u01F0", "\xE1\xBA", "\xE2\x84", "\xEF\xAC"};
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const bool beyondAscii = (static_cast<unsigned char>(text[i]) & 0x80U) != 0;
        if (beyondAscii
            && std::find(starts.begin(), starts.end(), text.substr(i, 2)) != starts.end())
            return true;
    }
    return false;
}

} // namespace

RegexShortcut::RegexShortcut(std::string_view expression, Folding folding) : m_folding(folding)
{
    const RegexLiterals literals = literalsOf(folded(expression, Folding(false, folding.markless)));
    m_folding.caseless = folding.caseless || literals.caseless;
    for (const PlainForm& form : literals.forms) {
        m_matchesAll = m_matchesAll || form.matchesAll();
        m_formsAreAscii = m_formsAreAscii && isAscii(form.text);
        m_forms.emplace_back(relationOf(form), form.text, m_folding);
    }
    if (!m_forms.empty())
        return;
    const auto letters =
        m_folding.caseless ? ByteFinder::Case::AsciiIgnored : ByteFinder::Case::Exact;
    for (const std::string& text : literals.required)
        m_required.emplace_back(m_folding.caseless ? asciiRun(text) : text, letters);
}

Truth RegexShortcut::matches(std::string_view text, FoldedTexts& folds) const
{
    if (m_matchesAll)
        return Truth::True;
    const auto matchesText = [&](const TextPattern& form) { return form.matches(text, folds); };
    if (std::any_of(m_forms.begin(), m_forms.end(), matchesText))
        return Truth::True;
    if (m_forms.empty() && m_required.empty())
        return Truth::Unknown;
    std::string room;
    const Folding marks(false, m_folding.markless && !isAscii(text));
    const std::string_view searched = folds.folded(text, marks, room);
    const auto isRequired = [&](const ByteFinder& finder) { return finder.isIn(searched); };
    if (std::any_of(m_required.begin(), m_required.end(), isRequired))
        return Truth::Unknown;
    const bool exact = !m_folding.caseless || (m_formsAreAscii && !mayFoldToAscii(searched));
    return exact ? Truth::False : Truth::Unknown;
}

} // namespace predicate
