// SPDX-License-Identifier: MIT
#include "model/logger.h"

#include "model/entrydate.h"
#include "model/entrylistfile.h"
#include "model/entryrichtext.h"
#include "model/fetchwalk.h"
#include "model/typednumber.h"
#include "platform/alerts.h"
#include "platform/clock.h"
#include "platform/clocktime.h"
#include "platform/panels.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr qint64 defaultMaximum = 1000;
constexpr qint64 lastSecond = 59;

/// The start of the date's minute, plus `second`. Reckoned from the point in time and not from the
/// calendar's fields, which name two points in the hour that daylight saving repeats.
QDateTime atSecond(const QDateTime& dateInZone, qint64 second)
{
    const QTime time = dateInZone.time();
    return dateInZone.addMSecs((second - time.second()) * 1000 - time.msec());
}

std::int64_t endOfPeriod(OSLogStore::Position start, double period)
{
    if (std::isnan(period))
        return std::numeric_limits<std::int64_t>::max();
    return start.after(std::abs(period)).time;
}

/// Sets the flag and sends the signals of a fetch for as long as what it returns lives.
auto announcedFetch(Logger& logger, bool& isFetching)
{
    isFetching = true;
    Q_EMIT logger.fetchBegins();
    return qScopeGuard([&logger, &isFetching] {
        isFetching = false;
        Q_EMIT logger.fetchEnds();
    });
}

} // namespace

std::shared_ptr<Logger> Logger::make(const Platform& platform)
{
    return std::shared_ptr<Logger>(new Logger(platform));
}

Logger::Logger(const Platform& platform)
    : m_platform(platform)
    , m_theDate(platform.clock.now())
    , m_theDateSecs(QStringLiteral("00"))
    , m_logDateStr(QStringLiteral("Tessel"))
{
}

template <typename Value>
void Logger::assign(Value& field, const Value& value, void (Logger::*changed)())
{
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

bool Logger::getLog(const QDateTime& start,
                    const QString& seconds,
                    const QString& maximum,
                    std::shared_ptr<const logstore::EntryFilter> predicate,
                    bool signposts,
                    double period)
{
    if (m_isFetching)
        return false;
    const auto self = shared_from_this(); // the observer may close the window
    const auto fetching = announcedFetch(*this, m_isFetching);
    setLogList({});
    setTitle(start, seconds);
    const auto store = openSource();
    if (!store)
        return false;
    const qint64 second = std::clamp<qint64>(typedNumber(seconds).value_or(0), 0, lastSecond);
    const QDateTime from = atSecond(start.toTimeZone(m_platform.clock.timeZone()), second);
    const qint64 most = typedNumber(maximum).value_or(defaultMaximum);
    const bool isComplete = fetch(*store, from, most, predicate, signposts, period);
    setReport(SourceReport(*store, predicate.get()));
    return isComplete;
}

Result<OSLogStore> Logger::openSource()
{
    bool isCancelled = false;
    QElapsedTimer sinceCall;
    const auto watch = [&, observer = m_fetchObserver](double fraction) {
        if (!observer || (sinceCall.isValid() && !sinceCall.hasExpired(FetchPace::interval)))
            return true;
        FetchProgress progress;
        progress.isOpening = true;
        progress.fraction = fraction;
        isCancelled = !observer(progress);
        sinceCall.start();
        return !isCancelled;
    };
    setReport({});
    auto store = m_archURL ? m_platform.logStores.archive(m_archURL->toLocalFile(), watch)
                           : m_platform.logStores.local(watch);
    if (!isCancelled)
        setReport(store ? SourceReport(*store) : SourceReport(store.error()));
    return store;
}

bool Logger::fetch(const OSLogStore& store,
                   const QDateTime& start,
                   qint64 maximum,
                   std::shared_ptr<const logstore::EntryFilter> predicate,
                   bool signposts,
                   double period)
{
    const QTimeZone zone = m_platform.clock.timeZone();
    const QString suffix = zoneSuffix(zone.offsetFromUtc(m_platform.clock.now()));
    assign(m_tzStr, suffix, &Logger::tzStrChanged);

    qsizetype announced = 0;
    const auto announce = [this, &announced] {
        if (m_logList.size() == announced)
            return;
        announced = m_logList.size();
        Q_EMIT logListChanged();
    };
    FetchObserver observer;
    if (m_fetchObserver) {
        observer = [&announce, watch = m_fetchObserver](const FetchProgress& progress) {
            announce();
            return watch(progress);
        };
    }
    const OSLogStore::Position position = store.position(start);
    const FetchRange range{position, endOfPeriod(position, period), maximum};
    EntryConversion conversion(signposts, zone, suffix);
    const bool isComplete =
        walkEntries(store, range, std::move(predicate), conversion, std::move(observer), m_logList);
    announce();
    return isComplete;
}

void Logger::setFetchObserver(FetchObserver observer)
{
    m_fetchObserver = std::move(observer);
}

void Logger::chooseArchive()
{
    OpenPanelRequest request;
    request.contentType = ContentType::LogArchive;
    request.confirmText = tr("Open Logarchive");
    m_platform.panels.open(request, [self = shared_from_this()](const PanelResult& result) {
        if (result.confirmed && !result.location)
            return;
        if (self->m_isFetching)
            return self->tellOfRunningFetch();
        if (!result.confirmed)
            self->setSource(std::nullopt);
        else if (const auto archive = self->archiveMeant(*result.location))
            self->setSource(archive);
    });
}

std::optional<QUrl> Logger::archiveMeant(const QUrl& chosen)
{
    const auto inside = OSLogStore::archiveInside(chosen.toLocalFile());
    if (!inside)
        return chosen;
    const auto nameOf = [](const QString& path) { return QFileInfo(path).fileName(); };
    const bool isMeant = m_platform.alerts.offer(
        tr("“%1” is not a log archive.").arg(nameOf(chosen.toLocalFile())),
        tr("It holds the log archive “%1”. Do you want to use that one?").arg(nameOf(*inside)),
        tr("Use It"));
    return isMeant ? std::optional(QUrl::fromLocalFile(*inside)) : std::nullopt;
}

void Logger::useArchive(const QUrl& archive)
{
    setSource(archive);
}

void Logger::setSource(const std::optional<QUrl>& archive)
{
    assign(m_archURL, archive, &Logger::archURLChanged);
    assign(m_usingArchive, archive.has_value(), &Logger::usingArchiveChanged);
    setReport({});
    if (!archive)
        return;
    const auto self = shared_from_this(); // the observer may close the window
    const auto fetching = announcedFetch(*this, m_isFetching);
    openSource();
}

void Logger::setReport(const SourceReport& report)
{
    m_sourceReport = report;
    Q_EMIT sourceReportChanged();
}

void Logger::setNote(const QSet<QUuid>& ids, const QString& note)
{
    QSet<QUuid> wanted = ids;
    const Text text(note);
    bool isChanged = false;
    for (qsizetype i = 0; i < m_logList.size() && !wanted.isEmpty(); ++i) {
        if (!wanted.remove(m_logList.at(i).id) || m_logList.at(i).userNote == text)
            continue;
        m_logList[i].userNote = text;
        isChanged = true;
    }
    if (isChanged)
        Q_EMIT logListChanged();
}

void Logger::setLogList(const QList<LogEntry>& entries)
{
    m_logList = entries;
    Q_EMIT logListChanged();
}

void Logger::readJSON()
{
    OpenPanelRequest request;
    request.contentType = ContentType::EntryList;
    request.confirmText = tr("Open");
    m_platform.panels.open(request, [self = shared_from_this()](const PanelResult& result) {
        if (result.confirmed && result.location && result.location->isLocalFile())
            self->openEntryList(result.location->toLocalFile());
    });
}

void Logger::tellOfRunningFetch()
{
    errorAlert({tr("Please wait until the log has been read.").toStdString()});
}

bool Logger::openEntryList(const QString& path)
{
    if (m_isFetching) {
        tellOfRunningFetch();
        return false;
    }
    const auto entries = loadEntryList(path);
    if (!entries) {
        errorAlert(entries.error());
        return false;
    }
    setLogList(*entries);
    setReport({});
    if (m_logList.isEmpty())
        return true;
    const QDateTime date = readEntryDate(m_logList.first().date).value_or(m_platform.clock.now());
    const int second = date.toTimeZone(m_platform.clock.timeZone()).time().second();
    setTitle(date, QStringLiteral("%1").arg(second, 2, 10, QLatin1Char('0')));
    return true;
}

void Logger::saveJSON(const QString& suffix)
{
    if (m_logList.isEmpty())
        return;
    const QString name = QStringLiteral("Tessel%1%2.tessel").arg(titleTime(), suffix);
    const auto completion = [self = shared_from_this()](const PanelResult& result) {
        if (!result.confirmed || !result.location)
            return;
        const auto saved = saveEntryList(self->m_logList, result.location->toLocalFile());
        if (!saved)
            self->errorAlert(saved.error());
    };
    m_platform.panels.save({ContentType::EntryList, name}, completion);
}

void Logger::saveRTF()
{
    if (m_logList.isEmpty())
        return;
    const QString name = QStringLiteral("Tessel%1.rtf").arg(titleTime());
    const auto completion = [self = shared_from_this(),
                             entries = m_logList](const PanelResult& result) {
        if (!result.confirmed || !result.location)
            return;
        const auto saved = saveRichText(entries, result.location->toLocalFile());
        if (!saved)
            self->errorAlert(saved.error());
    };
    m_platform.panels.save({ContentType::RichText, name}, completion);
}

void Logger::setTitle(const QDateTime& date, const QString& seconds)
{
    assign(m_theDate, date, &Logger::theDateChanged);
    assign(m_theDateSecs, seconds, &Logger::theDateSecsChanged);
    const QString title = QStringLiteral("Tessel %1").arg(titleTime());
    assign(m_logDateStr, title, &Logger::logDateStrChanged);
}

QString Logger::titleTime() const
{
    const QDateTime date = m_theDate.toTimeZone(m_platform.clock.timeZone());
    return date.toString(QStringLiteral("yyyy_MM_dd_HH-mm")) + QLatin1Char('-') + m_theDateSecs;
}

void Logger::errorAlert(const Failure& why)
{
    m_platform.alerts.critical(tr("An error occurred in your last action:"),
                               QString::fromStdString(why.description));
}
