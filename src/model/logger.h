// SPDX-License-Identifier: MIT
#pragma once

#include "model/fetchprogress.h"
#include "model/logentry.h"
#include "model/sourcereport.h"
#include "platform/base/result.h"
#include "platform/oslogstore.h"
#include "platform/platform.h"

#include <QDateTime>
#include <QObject>
#include <QSet>
#include <QUrl>

#include <memory>
#include <optional>

namespace logstore {
class EntryFilter;
}

/// The log model of one main window: the current list of entries and the texts that say where it
/// came from. Panels keep it alive until they have completed, so it is always owned by a shared
/// pointer.
class Logger : public QObject, public std::enable_shared_from_this<Logger>
{
    Q_OBJECT

public:
    static std::shared_ptr<Logger> make(const Platform& platform);

    /// Refer to the list, or copy single entries: a copy of the whole list that is alive while the
    /// list changes makes the change copy every entry.
    const QList<LogEntry>& logList() const { return m_logList; }
    QDateTime theDate() const { return m_theDate; }
    QString theDateSecs() const { return m_theDateSecs; }
    QString tzStr() const { return m_tzStr; }
    QString logDateStr() const { return m_logDateStr; }
    std::optional<QUrl> archURL() const { return m_archURL; }
    bool usingArchive() const { return m_usingArchive; }

    /// What the last command could not read.
    const SourceReport& sourceReport() const { return m_sourceReport; }
    /// Between fetchBegins and fetchEnds.
    bool isFetching() const { return m_isFetching; }

    /// Fetches entries from the chosen store forward from `start`'s minute and `seconds` until
    /// there are `maximum` of them or one lies later than |period| seconds after the start. Returns
    /// false when the store cannot be opened or read, or when the observer cancelled the fetch,
    /// which then leaves the entries that it had appended. logListChanged comes once for the
    /// emptying, once before each call of the observer when entries have come, and once at the end;
    /// never per entry.
    bool getLog(const QDateTime& start,
                const QString& seconds,
                const QString& maximum,
                std::shared_ptr<const logstore::EntryFilter> predicate,
                bool signposts,
                double period);

    /// Who watches the fetches, and may cancel them. A fetch that the observer asks for while one
    /// runs is refused.
    void setFetchObserver(FetchObserver observer);

    /// Tells the user that a command has to wait for the fetch.
    void tellOfRunningFetch();

    /// Opens the archive chooser. Confirming makes the archive the source of later fetches,
    /// cancelling the local store. An archive is opened once, watched like a fetch, so that the
    /// report tells what of it cannot be read.
    void chooseArchive();
    void useArchive(const QUrl& archive);
    /// What was chosen, or the log archive in it when it is a folder chosen by mistake and the user
    /// agrees to that; absent when he does not.
    std::optional<QUrl> archiveMeant(const QUrl& chosen);

    /// Sets the note of the first entry with each of the identities.
    void setNote(const QSet<QUuid>& ids, const QString& note);

    /// Replaces the list.
    void setLogList(const QList<LogEntry>& entries);

    /// Asks for an entry list file and opens it.
    void readJSON();
    /// Replaces the list by that of an entry list file. When the file does not read well or a fetch
    /// is running, an alert says so, the list stays, and the result is false.
    bool openEntryList(const QString& path);
    /// Asks for a file to save the list to; `suffix` ends the proposed name. Nothing for an empty
    /// list.
    void saveJSON(const QString& suffix);
    /// The same for rich text. The file gets the list as it is now, whatever happens to it while
    /// the panel is open.
    void saveRTF();

    /// The alert of a command that failed; returns when it is dismissed.
    void errorAlert(const Failure& why);

Q_SIGNALS:
    void logListChanged();
    void theDateChanged();
    void theDateSecsChanged();
    void tzStrChanged();
    void logDateStrChanged();
    void archURLChanged();
    void usingArchiveChanged();
    void sourceReportChanged();
    void fetchBegins();
    void fetchEnds();

private:
    explicit Logger(const Platform& platform);

    /// Sets a field and sends its signal when the value is another one.
    template <typename Value>
    void assign(Value& field, const Value& value, void (Logger::*changed)());

    bool fetch(const OSLogStore& store,
               const QDateTime& start,
               qint64 maximum,
               std::shared_ptr<const logstore::EntryFilter> predicate,
               bool signposts,
               double period);
    Result<OSLogStore> openSource();
    void setSource(const std::optional<QUrl>& archive);
    void setReport(const SourceReport& report);
    void setTitle(const QDateTime& date, const QString& seconds);
    QString titleTime() const;

    Platform m_platform;
    FetchObserver m_fetchObserver;
    bool m_isFetching = false;
    QList<LogEntry> m_logList;
    QDateTime m_theDate;
    QString m_theDateSecs;
    QString m_tzStr;
    QString m_logDateStr;
    std::optional<QUrl> m_archURL;
    bool m_usingArchive = false;
    SourceReport m_sourceReport;
};
