// SPDX-License-Identifier: MIT
#include "tools/logcatalogue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Whether that is the extension of a name, not all of it.
bool isLogData(std::string_view name)
{
    constexpr std::string_view extension = ".tracev3";
    return name.ends_with(extension) && name.size() > extension.size();
}

/// With one decimal place, whatever the user's language.
QString minutesText(std::chrono::microseconds period)
{
    const double minutes = std::chrono::duration<double, std::ratio<60>>(period).count();
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), minutes, std::chars_format::fixed, 1);
    return QString::fromLatin1(text.data(), end.ptr - text.data());
}

void appendDate(QString& line, FileTime time, ClockTimeWriter& write)
{
    std::array<char, ClockTimeWriter::length> text{};
    const auto second = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch();
    const int offset = write(second.count(), text.data());
    line.append(QLatin1StringView(text.data(), text.size())).append(u' ');
    line.append(zoneSuffix(offset));
}

} // namespace

void LogCatalogue::addFolder(const FilePath& folder, const QString& label)
{
    const auto items = m_files.itemsOfFolder(folder, isLogData);
    if (!items) {
        m_errors += QString::fromStdString(items.error().description);
        return;
    }
    for (const auto& [name, attributes] : *items) {
        if (!attributes)
            m_errors += QString::fromStdString(attributes.error().description);
        else if (attributes->isRegularFile)
            m_lines.append(lineOf(name, *attributes, label));
    }
}

QString
LogCatalogue::lineOf(const std::string& name, const FileAttributes& file, const QString& label)
{
    QString line;
    line.reserve(128);
    line.append(label).append(u'/').append(shownPath(name)).append(u'\t');
    appendDate(line, file.firstWritten(), m_created);
    line.append(u"  ");
    appendDate(line, file.modified, m_modified);
    line.append(u"  ").append(QString::number(file.size)).append(u" bytes");
    // A copy is younger than what was last written into it: its period is not known.
    if (file.modified >= file.created)
        line.append(u", period ").append(minutesText(file.modified - file.created)).append(u" min");
    return line.append(u'\n');
}

QStringList LogCatalogue::takeSortedLines()
{
    std::ranges::stable_sort(m_lines);
    return std::exchange(m_lines, {});
}
