// SPDX-License-Identifier: MIT
#include "platform/predicate/text/textpattern.h"

#include "platform/base/utf8.h"

namespace predicate {

namespace {

// The only characters beyond ASCII that fold to ASCII: to s and to k.
constexpr std::string_view longS = "\u017F";
constexpr std::string_view kelvinSign = "\u212A";

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size()
           && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

bool relates(TextRelation relation,
             std::string_view left,
             std::string_view right,
             Folding folding,
             FoldedTexts& folds)
{
    std::string leftRoom;
    std::string rightRoom;
    const std::string_view text = folds.folded(left, folding, leftRoom);
    if (relation == TextRelation::Like)
        return Wildcard(right, folding).matches(text);
    const std::string_view pattern = folds.folded(right, folding, rightRoom);
    if (relation == TextRelation::Equal)
        return text == pattern;
    if (pattern.empty())
        return false;
    switch (relation) {
    case TextRelation::Contains: return text.find(pattern) != std::string_view::npos;
    case TextRelation::BeginsWith: return text.substr(0, pattern.size()) == pattern;
    default: return endsWith(text, pattern);
    }
}

TextPattern::TextPattern(TextRelation relation, std::string_view pattern, Folding folding)
    : m_relation(relation)
    , m_folding(folding)
    , m_pattern(folded(pattern, folding))
    , m_finder(m_pattern,
               folding.caseless ? ByteFinder::Case::AsciiIgnored : ByteFinder::Case::Exact)
    , m_ascii(isAscii(m_pattern))
    , m_needsFold(m_pattern.find_first_of("ks") != std::string::npos)
{
    if (relation != TextRelation::Like)
        return;
    if (const auto plain = Wildcard::plain(pattern)) {
        const TextRelation ends = plain->starAfter ? TextRelation::BeginsWith : TextRelation::Equal;
        const TextRelation begins =
            plain->starAfter ? TextRelation::Contains : TextRelation::EndsWith;
        *this = TextPattern(plain->starBefore ? begins : ends, plain->text, folding);
    } else {
        m_wildcard.emplace(pattern, folding);
    }
}

/// Compares bytes, without regard to the case of ASCII letters when case is folded.
bool TextPattern::standsIn(std::string_view text) const
{
    const std::size_t size = m_finder.size();
    if (text.size() < size || (size == 0 && m_relation != TextRelation::Equal))
        return false;
    switch (m_relation) {
    case TextRelation::Equal: return text.size() == size && m_finder.standsAt(text.data());
    case TextRelation::Contains: return m_finder.isIn(text);
    case TextRelation::BeginsWith: return m_finder.standsAt(text.data());
    default: return m_finder.standsAt(text.data() + text.size() - size);
    }
}

/// Whether the folded text may contain the ASCII pattern although the text itself does not.
bool TextPattern::mayFoldToAscii(std::string_view text) const
{
    if (m_folding.markless)
        return !isAscii(text);
    return m_needsFold && !isAscii(text)
           && (text.find(longS) != std::string_view::npos
               || text.find(kelvinSign) != std::string_view::npos);
}

bool TextPattern::matches(std::string_view text, FoldedTexts& folds) const
{
    std::string room;
    if (m_wildcard)
        return m_wildcard->matches(folds.folded(text, m_folding, room));
    if (m_folding.none())
        return standsIn(text);
    if (m_ascii) {
        // Folding keeps ASCII in its place, so a match in the text is a match in the folded text.
        if (standsIn(text))
            return true;
        if (!mayFoldToAscii(text))
            return false;
    } else if (isAscii(text)) {
        return false;
    }
    return standsIn(folds.folded(text, m_folding, room));
}

} // namespace predicate
