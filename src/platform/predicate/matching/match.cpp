// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/match.h"

#include "platform/predicate/matching/fieldtable.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>

namespace predicate {

void Match::begin(const EntryFields& fields)
{
    m_fields = &fields;
    m_kind = fields.kind();
    m_known.reset();
    m_folds.clear();
    m_usedTexts = 0;
    m_usedLists = 0;
    m_regexSource = {};
}

/// Decides which kinds of entries carry the field, and which values count as absent.
Value Match::read(Field field)
{
    if (m_kind && !fieldInfo(field).isCarriedBy(*m_kind))
        return {};
    const Value value = m_fields->field(field);
    if (value.kind() == Value::Kind::Uuid)
        return uuidText(value.asUuid());
    if (value.isText() && value.asText().empty() && field != Field::ComposedMessage)
        return {};
    return value;
}

Value Match::uuidText(const Value::UuidBytes& uuid)
{
    if (std::all_of(uuid.begin(), uuid.end(), [](std::uint8_t byte) { return byte == 0; }))
        return {};
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string& text = newText();
    for (std::size_t i = 0; i < uuid.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        text += digits[uuid[i] >> 4U];
        text += digits[uuid[i] & 15U];
    }
    return Value::text(text);
}

std::string& Match::newText()
{
    if (m_usedTexts == m_texts.size())
        m_texts.emplace_back();
    std::string& text = m_texts[m_usedTexts++];
    text.clear();
    return text;
}

std::vector<Value>& Match::newList()
{
    if (m_usedLists == m_lists.size())
        m_lists.emplace_back();
    std::vector<Value>& list = m_lists[m_usedLists++];
    list.clear();
    return list;
}

/// The text in UTF-16, as ICU needs it. The last one is kept for the next pattern.
const std::u16string& Match::regexText(std::string_view text, Folding folding)
{
    const Folding marks(false, folding.markless);
    const bool same = !text.empty() && m_regexSource.data() == text.data()
                      && m_regexSource.size() == text.size() && m_regexFolding == marks;
    if (!same) {
        std::string room;
        utf16Into(m_folds.folded(text, marks, room), m_regexText);
        m_regexSource = text;
        m_regexFolding = marks;
    }
    return m_regexText;
}

bool Match::matchesRegex(const Regex& compiled, std::string_view text, Folding folding)
{
    OwnRegex& own = m_regexes[compiled.get()];
    if (!own.regex)
        own.regex = copyOf(compiled);
    return own.regex && wholeMatches(own.regex.get(), regexText(text, folding), own.overruns);
}

bool Match::matchesPattern(std::string_view pattern, std::string_view text, Folding folding)
{
    if (!m_lastPattern || m_lastPattern->pattern != pattern
        || !(m_lastPattern->folding == folding)) {
        auto regex = compiledRegex(pattern, folding);
        m_lastPattern =
            LastPattern{std::string(pattern), folding, regex ? *std::move(regex) : nullptr};
    }
    return m_lastPattern->regex
           && wholeMatches(m_lastPattern->regex.get(), regexText(text, folding), m_patternOverruns);
}

bool Match::gaveUp() const
{
    return m_patternOverruns > 0
           || std::any_of(m_regexes.begin(), m_regexes.end(),
                          [](const auto& regex) { return regex.second.overruns > 0; });
}

} // namespace predicate
