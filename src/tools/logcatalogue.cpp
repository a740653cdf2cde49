// SPDX-License-Identifier: MIT
#include "tools/logcatalogue.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace {

/// With one decimal place, whatever the user's language.
QString minutesText(std::chrono::nanoseconds period)
{
    const double minutes = std::chrono::duration<double, std::ratio<60>>(period).count();
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), minutes, std::chars_format::fixed, 1);
    return QString::fromLatin1(text.data(), end.ptr - text.data());
}

} // namespace

void LogCatalogue::addFolder(const FilePath& folder, const QString& label)
{
    const auto names = m_files.contentsOfFolder(folder);
    if (!names) {
        m_errors += QString::fromStdString(names.error().description);
        return;
    }
    for (const std::string& name : *names)
        addFile(folder / name, label);
}

void LogCatalogue::addFile(const FilePath& file, const QString& label)
{
    if (file.extension() != ".tracev3")
        return;
    const auto attributes = m_files.attributesOfItem(file);
    if (!attributes) {
        m_errors += QString::fromStdString(attributes.error().description);
        return;
    }
    if (!attributes->isRegularFile)
        return;
    QString line = label + u'/' + shownPath(file.filename()) + u'\t' + dateText(attributes->created)
                   + u"  "_s + dateText(attributes->modified) + u"  "_s
                   + QString::number(attributes->size) + u" bytes"_s;
    // A copy can be younger than what was last written into it.
    const std::chrono::nanoseconds period = attributes->modified - attributes->created;
    if (period.count() >= 0)
        line += u", period "_s + minutesText(period) + u" min"_s;
    m_lines.append(line + u'\n');
}

QStringList LogCatalogue::sortedLines() const
{
    QStringList lines = m_lines;
    std::ranges::stable_sort(lines);
    return lines;
}

QString LogCatalogue::dateText(FileTime time) const
{
    const qint64 seconds =
        std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    const int offset = m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC));
    const QDateTime local = QDateTime::fromSecsSinceEpoch(seconds, Qt::OffsetFromUTC, offset);
    const int minutes = std::abs(offset) / 60;
    return local.toString(u"yyyy-MM-dd HH:mm:ss ") + (offset < 0 ? u'-' : u'+')
           + QString::number(minutes / 60 * 100 + minutes % 60).rightJustified(4, u'0');
}
