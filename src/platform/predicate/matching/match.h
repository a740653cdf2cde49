// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/entryfields.h"
#include "platform/predicate/matching/value.h"
#include "platform/predicate/text/regexpattern.h"
#include "platform/predicate/text/textfolding.h"

#include <array>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace predicate {

/// The state of an evaluation: the entry, the fields read so far, and working memory, which the
/// next evaluation uses again.
class Match
{
public:
    void begin(const EntryFields& fields);

    Value field(Field field)
    {
        const auto index = static_cast<std::size_t>(field);
        if (!m_known[index]) {
            m_values[index] = read(field);
            m_known.set(index);
        }
        return m_values[index];
    }

    FoldedTexts& folds() { return m_folds; }

    /// Memory for results, valid until the next begin().
    std::string& newText();
    std::vector<Value>& newList();

    bool matchesRegex(const Regex& compiled, std::string_view text, Folding folding);
    /// For a pattern that is not constant. False when it is not valid.
    bool matchesPattern(std::string_view pattern, std::string_view text, Folding folding);
    /// Whether a regular expression has run out of time.
    bool gaveUp() const;

private:
    Value read(Field field);
    Value uuidText(const Value::UuidBytes& uuid);
    const std::u16string& regexText(std::string_view text, Folding folding);

    const EntryFields* m_fields = nullptr;
    std::optional<EntryKind> m_kind;
    std::array<Value, fieldCount> m_values{};
    Fields m_known;
    FoldedTexts m_folds;

    std::deque<std::string> m_texts;
    std::size_t m_usedTexts = 0;
    std::deque<std::vector<Value>> m_lists;
    std::size_t m_usedLists = 0;

    struct OwnRegex
    {
        Regex regex;
        int overruns = 0;
    };
    std::unordered_map<const URegularExpression*, OwnRegex> m_regexes;
    std::u16string m_regexText;
    std::string_view m_regexSource;
    Folding m_regexFolding;
    struct LastPattern
    {
        std::string pattern;
        Folding folding;
        Regex regex;
    };
    std::optional<LastPattern> m_lastPattern;
    int m_patternOverruns = 0; ///< of all patterns that are not constant
};

} // namespace predicate
