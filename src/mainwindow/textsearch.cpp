// SPDX-License-Identifier: MIT
#include "mainwindow/textsearch.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t blockSize = sizeof(std::uint64_t);
constexpr std::uint64_t eachByte = 0x0101010101010101;
constexpr std::uint64_t highBits = 0x8080808080808080;

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

constexpr char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return isAscii(c); });
}

bool isPrintable(char c)
{
    return c >= ' ' && c <= '~';
}

/// The longest part of a query that any text it is in must hold byte by byte. A letter before a
/// character beyond ASCII is left out: with a mark it has other spellings.
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

bool equalsLowered(const char* text, std::string_view lowered)
{
    return std::equal(lowered.begin(), lowered.end(), text,
                      [](char a, char b) { return a == lower(b); });
}

/// Tests eight places at a time for one lower-case character: a byte of the result is 0 where it
/// may stand.
struct BytePattern
{
    std::uint64_t value;
    std::uint64_t caseBit;

    explicit BytePattern(char lowered)
        : value(eachByte * static_cast<unsigned char>(lowered))
        , caseBit(lowered >= 'a' && lowered <= 'z' ? eachByte * 0x20 : 0)
    {
    }

    std::uint64_t differences(const char* text) const
    {
        std::uint64_t word;
        std::memcpy(&word, text, sizeof word);
        return (word | caseBit) ^ value;
    }
};

bool hasZeroByte(std::uint64_t word)
{
    return ((word - eachByte) & ~word & highBits) != 0;
}

} // namespace

TextSearch::TextSearch(const QString& query)
    : m_query(searchForm(query))
    , m_alphabet(alphabetOf(m_query))
    , m_run(longestRun(m_query.toStdString()))
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
    // No text of ASCII has a lower-case or composed form beyond it.
    if (m_alphabet == Alphabet::BeyondAscii && isAscii(utf8))
        return false;
    const Verdict verdict = m_run.empty() ? Verdict::Undecided : scan(utf8);
    if (verdict == Verdict::Found && m_alphabet == Alphabet::PrintableAscii)
        return true;
    return verdict != Verdict::NotFound && isInByCharacters(utf8);
}

/// Looks for the run, eight places at a time: a place counts when the run's first and last bytes
/// both fit there.
TextSearch::Verdict TextSearch::scan(std::string_view utf8) const
{
    if (utf8.size() < m_run.size())
        return hasTwin(utf8) ? Verdict::Undecided : Verdict::NotFound;
    const std::size_t places = utf8.size() - m_run.size() + 1;
    const BytePattern first(m_run.front());
    const BytePattern last(m_run.back());
    const char* const lastBytes = utf8.data() + m_run.size() - 1;

    Verdict verdict = Verdict::NotFound;
    const auto judgeRange = [&](std::size_t from, std::size_t to) {
        for (std::size_t place = from; place < to && verdict != Verdict::Found; ++place) {
            const Verdict here = judge(utf8, place);
            if (here != Verdict::NotFound)
                verdict = here;
        }
    };
    std::size_t place = 0;
    for (; place + blockSize <= places && verdict != Verdict::Found; place += blockSize) {
        if (hasZeroByte(first.differences(utf8.data() + place)
                        | last.differences(lastBytes + place)))
            judgeRange(place, place + blockSize);
    }
    judgeRange(place, places);
    if (verdict == Verdict::NotFound && hasTwin(utf8))
        return Verdict::Undecided;
    return verdict;
}

/// A match between ASCII neighbours is one of whole characters; beside others only their nature can
/// tell, for a mark belongs to the letter before it.
TextSearch::Verdict TextSearch::judge(std::string_view utf8, std::size_t place) const
{
    if (!equalsLowered(utf8.data() + place, m_run))
        return Verdict::NotFound;
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
    const QString text =
        searchForm(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
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
