// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"
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

    const QList<LogEntry>& logList() const { return m_logList; }
    QDateTime theDate() const { return m_theDate; }
    QString theDateSecs() const { return m_theDateSecs; }
    QString tzStr() const { return m_tzStr; }
    QString logDateStr() const { return m_logDateStr; }
    std::optional<QUrl> archURL() const { return m_archURL; }
    bool usingArchive() const { return m_usingArchive; }

    /// Fetches entries from the chosen store forward from `start`'s minute and `seconds` until
    /// there are `maximum` of them or one lies later than |period| seconds after the start. Returns
    /// false when the store cannot be opened or read.
    bool getLog(const QDateTime& start,
                const QString& seconds,
                const QString& maximum,
                std::shared_ptr<const logstore::EntryFilter> predicate,
                bool signposts,
                double period);

    /// Opens the archive chooser. Confirming makes the archive the source of later fetches,
    /// cancelling the local store.
    void chooseArchive();

    /// Sets the note of the first entry with each of the identities.
    void setNote(const QSet<QUuid>& ids, const QString& note);

    /// Replaces the list by some of its own entries.
    void setLogList(const QList<LogEntry>& entries);

    void readJSON();
    void saveJSON(const QString& suffix);
    void saveRTF();

Q_SIGNALS:
    void logListChanged();
    void theDateChanged();
    void theDateSecsChanged();
    void tzStrChanged();
    void logDateStrChanged();
    void archURLChanged();
    void usingArchiveChanged();

private:
    explicit Logger(const Platform& platform);

    Platform m_platform;
    QList<LogEntry> m_logList;
    QDateTime m_theDate;
    QString m_theDateSecs;
    QString m_tzStr;
    QString m_logDateStr;
    std::optional<QUrl> m_archURL;
    bool m_usingArchive = false;
};
