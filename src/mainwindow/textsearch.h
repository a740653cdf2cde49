// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"
#include "platform/base/bytefinder.h"

#include <QList>
#include <QString>

#include <array>
#include <string>
#include <string_view>

/// Whether texts contain a query, letter case apart.
///
/// Both are lower-cased by Unicode's full mapping, in the same way in every locale, and compared by
/// grapheme clusters: a letter with its marks, or an emoji with its parts, is one character.
/// Canonically equivalent characters are equal. So "e" is not in "é", in neither of its two forms,
/// and "k" is found in a text with a KELVIN SIGN.
class TextSearch
{
public:
    explicit TextSearch(const QString& query);

    bool isIn(std::string_view utf8) const;

private:
    enum class Verdict { Found, NotFound, Undecided };
    enum class Alphabet { PrintableAscii, Ascii, BeyondAscii };

    static Alphabet alphabetOf(const QString& query);
    Verdict scan(std::string_view utf8) const;
    Verdict judge(std::string_view utf8, std::size_t place) const;
    bool hasTwin(std::string_view utf8) const;
    bool isInByCharacters(std::string_view utf8) const;

    QString m_query; ///< lower-cased, in composed form
    Alphabet m_alphabet;
    std::string m_run;   ///< printable ASCII that must stand in a text as it is, letter case apart
    ByteFinder m_finder; ///< of the run
    std::array<std::string_view, 3> m_twins; ///< other spellings of characters of the run
};

/// The entries, in their order, whose field of the search type contains the query, letter case
/// apart. Types are 0 messages, 1 processes, 2 senders, 3 subsystems, any other notes; an entry
/// without a note is never among them.
QList<LogEntry> entriesFound(const QList<LogEntry>& entries, int searchType, const QString& query);
