// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/bytefinder.h"

#include <QString>

#include <array>
#include <string>
#include <string_view>

/// Whether texts contain a query, letter case apart.
///
/// Both are lower-cased by Unicode's full mapping, the same in every locale, and compared character
/// by character, where a character is what a reader sees as one: a letter with all its marks, an
/// emoji with all its parts. Canonically equivalent characters are equal. So "e" is not in "é",
/// however that is written, and "k" is found where a KELVIN SIGN stands.
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
