// SPDX-License-Identifier: MIT
#include "tools/diagnoser.h"

#include "platform/clock.h"

#include <QDateTime>

#include <algorithm>
#include <unicode/numberformatter.h>

using namespace Qt::StringLiterals;

namespace {

QString dateStamp(FileTime time)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    return QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc())
        .toString(u"yyyy-MM-dd'T'HH_mm_ss'Z'");
}

} // namespace

std::optional<QString> withFourSignificantDigits(double number, const QLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text =
        icu::number::NumberFormatter::withLocale(
            icu::Locale::forLanguageTag(locale.bcp47Name().toStdString(), status))
            .precision(icu::number::Precision::minMaxSignificantDigits(1, 4))
            .grouping(UNUM_GROUPING_OFF)
            .formatDouble(number, status)
            .toString(status);
    if (U_FAILURE(status))
        return std::nullopt;
    return QString::fromUtf16(text.getBuffer(), text.length());
}

std::shared_ptr<Diagnoser> Diagnoser::make(const Platform& platform, FileManager& files)
{
    return std::shared_ptr<Diagnoser>(new Diagnoser(platform, files));
}

Diagnoser::Diagnoser(const Platform& platform, FileManager& files)
    : LogFolderTool(platform, files, {ContentType::Folder, true, {}, u"DiagnosticsAnalysis.txt"_s})
    , m_theDefaultURL(QUrl::fromLocalFile(u"/private/var/db/diagnostics"_s))
{
}

void Diagnoser::getInfo()
{
    chooseFolder([this](const FilePath& folder) {
        QString report =
            u"Unified log information.  Check of log files in the diagnostics folder.\n"_s;
        report += u"\t%1 items in the path %2:\n"_s.arg(QString::number(countItems(folder)),
                                                        shownPath(folder));
        for (const QString& name : {u"Persist"_s, u"Special"_s, u"Signpost"_s, u"timesync"_s}) {
            const QString count = QString::number(countItems(folder / name.toStdString()));
            const QString end = name == u"timesync" ? u"."_s : u";"_s;
            report += u"\t%1 files in the %2 folder%3\n"_s.arg(count, name, end);
        }
        setTheOutputText(report + oldestEntryLine(folder / "Persist"));
    });
}

void Diagnoser::chooseFolder(const std::function<void(const FilePath&)>& then)
{
    OpenPanelRequest request = folderRequest();
    request.startFolder = m_theDefaultURL.toLocalFile();
    open(request, [this, then](const QUrl& location) {
        setTheDefaultURL(location);
        then(filePath(location));
    });
}

void Diagnoser::setTheDefaultURL(const QUrl& location)
{
    if (m_theDefaultURL == location)
        return;
    m_theDefaultURL = location;
    Q_EMIT theDefaultURLChanged();
}

qsizetype Diagnoser::countItems(const FilePath& folder) const
{
    const auto names = files().contentsOfFolder(folder);
    return names ? static_cast<qsizetype>(names->size()) : 0;
}

QString Diagnoser::oldestEntryLine(const FilePath& persist) const
{
    FileTime oldest = now();
    const auto items = files().itemsOfFolder(persist, [](std::string_view) { return true; });
    if (!items)
        return u"Couldn't determine the oldest log entry.\n"_s;
    for (const FolderItem& item : *items) {
        if (item.attributes)
            oldest = std::min(oldest, item.attributes->firstWritten());
    }
    using Days = std::chrono::duration<double, std::ratio<86400>>;
    const auto days = withFourSignificantDigits(Days(now() - oldest).count(), QLocale());
    return u"The oldest Persist log entry has a datestamp of "_s + dateStamp(oldest) + u", "_s
           + days.value_or(u" unknown "_s) + u" days ago.\n"_s;
}

FileTime Diagnoser::now() const
{
    return FileTime(std::chrono::milliseconds(platform().clock.now().toMSecsSinceEpoch()));
}
