// SPDX-License-Identifier: MIT
#include "tools/logstatistics.h"

#include <QStringBuilder>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view separator = "--- !logd statistics record\n";
constexpr std::string_view rotation = "type  : File Rotate\nfile  : Persist/";

// The lines of a record:
//   0  type  : File Rotate
//   1  file  : Persist/0000000000000042.tracev3
//   2  time  : 2024-03-07 14:05:09+0100
//   3  total : 10485760
//   4  procs :
//   5      - [    3355443,  32.0, /usr/libexec/example ]     and so on, to line 24 at most
constexpr std::size_t fewestLines = 11;
constexpr std::size_t mostLines = 25;
constexpr std::size_t firstRow = 5;

constexpr auto isNewline = [](char16_t c) {
    return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
};

/// The first lines of a text, the empty ones included.
std::vector<QStringView> firstLines(QStringView text, std::size_t most)
{
    std::vector<QStringView> lines;
    lines.reserve(most);
    const char16_t* start = text.utf16();
    const char16_t* const end = start + text.size();
    while (lines.size() < most) {
        const char16_t* const newline = std::find_if(start, end, isNewline);
        lines.emplace_back(start, newline);
        if (newline == end)
            break;
        const bool isPair = *newline == u'\r' && newline + 1 != end && newline[1] == u'\n';
        start = newline + (isPair ? 2 : 1);
    }
    return lines;
}

/// The part of a text after the first divider, up to the second.
std::optional<QStringView> secondPart(QStringView text, QStringView divider)
{
    const qsizetype first = text.indexOf(divider);
    if (first < 0)
        return std::nullopt;
    const QStringView rest = text.sliced(first + divider.size());
    const qsizetype second = rest.indexOf(divider);
    return second < 0 ? rest : rest.first(second);
}

/// Below this no two code units make one character together, CR LF apart.
bool isSimple(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return c < u'\u0300' && c != u'\r'; });
}

/// A character, here and in the next, is what a reader takes for one: a letter with its accents, an
/// emoji.
QStringView withoutFirst(QStringView text, qsizetype characters)
{
    if (text.size() <= characters)
        return {};
    if (isSimple(text.first(characters + 1)))
        return text.sliced(characters);
    QTextBoundaryFinder boundary(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    for (; characters > 0 && boundary.toNextBoundary() >= 0; --characters) {
    }
    return text.sliced(boundary.position() < 0 ? text.size() : boundary.position());
}

QStringView withoutLast(QStringView text, qsizetype characters)
{
    if (text.size() <= characters)
        return {};
    if (isSimple(text.last(characters)))
        return text.chopped(characters);
    QTextBoundaryFinder boundary(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    boundary.toEnd();
    for (; characters > 0 && boundary.toPreviousBoundary() >= 0; --characters) {
    }
    return text.first(std::max<qsizetype>(boundary.position(), 0));
}

struct Row
{
    QStringView size;
    QStringView percent;
    QStringView process;
};

/// The fields of a row are divided by commas, also where a path holds one. Around them stand the
/// characters of a list: "    - [ " before the first, " ]" after the third.
std::optional<Row> rowFrom(QStringView line)
{
    const qsizetype first = line.indexOf(u',');
    const qsizetype second = first < 0 ? -1 : line.indexOf(u',', first + 1);
    if (second < 0)
        return std::nullopt;
    QStringView path = line.sliced(second + 1);
    if (const qsizetype third = path.indexOf(u','); third >= 0)
        path = path.first(third);
    path = withoutLast(path, 2);
    return Row{withoutFirst(line.first(first), 8).trimmed(),
               line.sliced(first + 1, second - first - 1).trimmed(),
               path.sliced(path.lastIndexOf(u'/') + 1)};
}

struct Heading
{
    QStringView name;
    QStringView date;
    QStringView total;
};

std::optional<Heading> headingFrom(const std::vector<QStringView>& lines)
{
    const auto name = secondPart(lines[1], u"/");
    const auto date = secondPart(lines[2], u": ");
    const auto total = secondPart(lines[3], u": ");
    if (!name || !date || !total)
        return std::nullopt;
    const QStringView dateWithoutZone = withoutLast(*date, 5);
    if (date->size() < 5)
        return std::nullopt;
    return Heading{*name, dateWithoutZone, *total};
}

/// The report's first line, or in the form of values what each row begins with. None when the date
/// has no time in it.
std::optional<QString> prefixFrom(const Heading& heading, LogStatistics::Form form)
{
    const auto [name, date, total] = heading;
    if (form == LogStatistics::Form::Text)
        return name % u' ' % date % u' ' % total % u":\n";
    const auto time = secondPart(date, u" ");
    if (!time)
        return std::nullopt;
    return date.first(date.indexOf(u' ')) % u',' % *time % u',' % total % u',' % name;
}

} // namespace

void LogStatistics::analyseFolder(FileManager& files, const FilePath& folder)
{
    const auto names = files.contentsOfFolder(folder);
    if (!names) {
        m_errors += QString::fromStdString(names.error().description);
        return;
    }
    for (const std::string& name : *names)
        analyseFile(files, folder / name);
}

void LogStatistics::analyseFile(FileManager& files, const FilePath& file)
{
    if (file.extension() != ".txt")
        return;
    if (const auto text = files.textOfFile(file))
        analyseText(*text);
    else
        m_errors += QString::fromStdString(text.error().description);
}

void LogStatistics::analyseText(QByteArrayView text)
{
    // Most of a statistics file is of no interest, so records are told apart as bytes.
    std::string_view rest(text.data(), static_cast<std::size_t>(text.size()));
    while (!rest.empty()) {
        const void* found = ::memmem(rest.data(), rest.size(), separator.data(), separator.size());
        const std::size_t length =
            found ? static_cast<std::size_t>(static_cast<const char*>(found) - rest.data())
                  : rest.size();
        const std::string_view record = rest.substr(0, length);
        if (record.starts_with(rotation))
            analyseRecord(QString::fromUtf8(record.data(), static_cast<qsizetype>(record.size())));
        rest.remove_prefix(found ? length + separator.size() : length);
    }
}

void LogStatistics::analyseRecord(const QString& record)
{
    const std::vector<QStringView> lines = firstLines(record, mostLines);
    if (lines.size() < fewestLines)
        return;
    const auto heading = headingFrom(lines);
    const auto prefix = heading ? prefixFrom(*heading, m_form) : std::nullopt;
    if (!prefix)
        return;

    QString& report = m_report;
    report.resize(0); // keeps its room from record to record
    if (m_form == Form::Text)
        report.append(*prefix);
    for (std::size_t index = firstRow; index < lines.size(); ++index) {
        const auto row = rowFrom(lines[index]);
        if (!row)
            continue;
        const auto [size, percent, process] = *row;
        if (m_form == Form::Text)
            report += u'\t' % size % u' ' % percent % u' ' % process % u'\n';
        else
            report += *prefix % u',' % size % u',' % percent % u',' % process % u'\n';
    }
    m_fileNames.append(heading->name.toString());
    m_reports.insert(m_fileNames.last(), QString(report.constData(), report.size()));
}
