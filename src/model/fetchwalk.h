// SPDX-License-Identifier: MIT
#pragma once

#include "model/entryconversion.h"
#include "model/fetchprogress.h"
#include "platform/oslogstore.h"

#include <QElapsedTimer>
#include <QList>

#include <memory>

/// Says now and then how far a fetch has come, and remembers when it was told to stop.
class FetchPace
{
public:
    FetchPace(FetchObserver observer, std::int64_t start, std::int64_t end, qint64 maximum);

    /// Counts one entry read. Returns false once the fetch is cancelled.
    bool step(std::int64_t time)
    {
        if (++m_progress.entriesRead % entriesBetweenLooks == 0)
            look(time);
        return !m_cancelled;
    }
    /// Calls the observer if its time has come.
    void look(std::int64_t time);
    void countFetched() { ++m_progress.fetched; }
    qsizetype fetched() const { return m_progress.fetched; }
    bool isCancelled() const { return m_cancelled; }

    static constexpr qint64 interval = 50; ///< milliseconds between two calls

private:
    /// A look at the clock costs as much as an entry.
    static constexpr quint64 entriesBetweenLooks = 64;

    double fraction(std::int64_t time) const;

    FetchObserver m_observer;
    std::int64_t m_start;
    std::int64_t m_end;
    qint64 m_maximum;
    FetchProgress m_progress;
    QElapsedTimer m_sinceCall;
    bool m_cancelled = false;
};

/// What a fetch takes from a store.
struct FetchRange
{
    OSLogStore::Position start;
    std::int64_t end = 0; ///< the first kept entry later than this is the last one
    qint64 maximum = 0;   ///< kept entries; 0 or less reads one entry
};

/// Appends the entries of `range` that match to `list`, oldest first. Returns false when the
/// observer cancelled the walk.
bool walkEntries(const OSLogStore& store,
                 const FetchRange& range,
                 std::shared_ptr<const logstore::EntryFilter> matching,
                 EntryConversion& conversion,
                 FetchObserver observer,
                 QList<LogEntry>& list);
