// SPDX-License-Identifier: MIT
#include "mainwindow/textsearch.h"

#include "model/text.h"
#include "platform/base/utf8.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>

namespace {

/// The only characters beyond ASCII that become a single ASCII character when they are lower-cased
/// and brought into composed form.
struct Twin
{
    char ascii;
    std::string_view utf8;
};
constexpr std::array<Twin, 3> asciiTwins = {{
    {'k', "\xE2\x84\xAA"}, // U+212A KELVIN SIGN
    {';', "\xCD\xBE"},     // U+037E GREEK QUESTION MARK
    {'`', "\xE1\xBF\xAF"}, // U+1FEF GREEK VARIA
}};

QString searchForm(const QString& text)
{
    return text.toLower().normalized(QString::NormalizationForm_C);
}

constexpr bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

bool isPrintable(char c)
{
    return c >= ' ' && c <= '~';
}

/// The longest part of a query that a text with the query must contain byte by byte. A letter
/// before a non-ASCII character is left out, as it may be composed with a mark.
std::string longestRun(std::string_view query)
{
    std::string_view longest;
    for (std::size_t from = 0; from < query.size();) {
        std::size_t end = from;
        while (end < query.size() && isPrintable(query[end]))
            ++end;
        const bool isBeforeOther = end > from && end < query.size() && !isAscii(query[end]);
        const std::size_t size = end - from - (isBeforeOther ? 1 : 0);
        if (size > longest.size())
            longest = query.substr(from, size);
        from = end + 1;
    }
    return std::string(longest);
}

} // namespace

TextSearch::TextSearch(const QString& query)
    : m_query(searchForm(query))
    , m_alphabet(alphabetOf(m_query))
    , m_run(longestRun(m_query.toStdString()))
    , m_finder(m_run, ByteFinder::Case::AsciiIgnored)
{
    for (std::size_t i = 0; i < asciiTwins.size(); ++i) {
        if (m_run.find(asciiTwins[i].ascii) != std::string::npos)
            m_twins[i] = asciiTwins[i].utf8;
    }
}

TextSearch::Alphabet TextSearch::alphabetOf(const QString& query)
{
    const auto isPrintableUnit = [](QChar c) { return c >= u' ' && c <= u'~'; };
    const auto isAsciiUnit = [](QChar c) { return c < u'\x80'; };
    if (std::all_of(query.begin(), query.end(), isPrintableUnit))
        return Alphabet::PrintableAscii;
    return std::all_of(query.begin(), query.end(), isAsciiUnit) ? Alphabet::Ascii
                                                                : Alphabet::BeyondAscii;
}

bool TextSearch::isIn(std::string_view utf8) const
{
    if (m_query.isEmpty())
        return true;
    // The lower-case and composed forms of an ASCII text are ASCII.
    if (m_alphabet == Alphabet::BeyondAscii && isAscii(utf8))
        return false;
    const Verdict verdict = m_run.empty() ? Verdict::Undecided : scan(utf8);
    if (verdict == Verdict::Found && m_alphabet == Alphabet::PrintableAscii)
        return true;
    return verdict != Verdict::NotFound && isInByCharacters(utf8);
}

TextSearch::Verdict TextSearch::scan(std::string_view utf8) const
{
    Verdict verdict = Verdict::NotFound;
    for (std::size_t place = m_finder.find(utf8); place != ByteFinder::npos;
         place = m_finder.find(utf8, place + 1)) {
        verdict = judge(utf8, place);
        if (verdict == Verdict::Found)
            return verdict;
    }
    return verdict == Verdict::NotFound && hasTwin(utf8) ? Verdict::Undecided : verdict;
}

/// A match between ASCII characters is a match of whole characters. Next to a non-ASCII character
/// it is undecided: that may be a mark of the letter before it.
TextSearch::Verdict TextSearch::judge(std::string_view utf8, std::size_t place) const
{
    const std::size_t end = place + m_run.size();
    const bool alone =
        (place == 0 || isAscii(utf8[place - 1])) && (end == utf8.size() || isAscii(utf8[end]));
    return alone ? Verdict::Found : Verdict::Undecided;
}

bool TextSearch::hasTwin(std::string_view utf8) const
{
    return std::any_of(m_twins.begin(), m_twins.end(), [&](std::string_view twin) {
        return !twin.empty() && utf8.find(twin) != std::string_view::npos;
    });
}

bool TextSearch::isInByCharacters(std::string_view utf8) const
{
    const QString text = searchForm(utf16(utf8));
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    const auto isBoundary = [&](qsizetype position) {
        characters.setPosition(position);
        return characters.isAtBoundary();
    };
    for (qsizetype at = text.indexOf(m_query); at >= 0; at = text.indexOf(m_query, at + 1)) {
        if (isBoundary(at) && isBoundary(at + m_query.size()))
            return true;
    }
    return false;
}

namespace {

constexpr std::array<Text LogEntry::*, 4> searchedFields = {
    &LogEntry::composedMessage, &LogEntry::process, &LogEntry::sender, &LogEntry::subsystem};

const Text* searchedText(const LogEntry& entry, int searchType)
{
    if (searchType >= 0 && searchType < static_cast<int>(searchedFields.size()))
        return &(entry.*searchedFields[static_cast<std::size_t>(searchType)]);
    return entry.userNote ? &*entry.userNote : nullptr;
}

} // namespace

QList<LogEntry> entriesFound(const QList<LogEntry>& entries, int searchType, const QString& query)
{
    const TextSearch search(query);
    QList<LogEntry> found;
    for (const LogEntry& entry : entries) {
        const Text* const text = searchedText(entry, searchType);
        if (text != nullptr && search.isIn(text->utf8()))
            found.append(entry);
    }
    return found;
}
