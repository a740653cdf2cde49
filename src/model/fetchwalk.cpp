// SPDX-License-Identifier: MIT
#include "model/fetchwalk.h"

#include "platform/base/timeunits.h"

#include <algorithm>

namespace {

/// The wanted filter, with a step of the pace for each entry that it turns away and a look for each
/// part of the store: a long search that finds nothing can then be watched and cancelled as well.
/// After cancelling it lets the entry at hand through, so that the stream comes back to the walk.
class PacedFilter final : public logstore::EntryFilter
{
public:
    PacedFilter(std::shared_ptr<const EntryFilter> wanted, std::shared_ptr<FetchPace> pace)
        : m_wanted(std::move(wanted))
        , m_pace(std::move(pace))
    {
    }

    bool matches(const logstore::Entry& entry) const override
    {
        return m_wanted->matches(entry) || !m_pace->step(entry.time());
    }

    bool mayMatch(const logstore::ProcessFacts& process) const override
    {
        return m_wanted->mayMatch(process);
    }

    bool mayMatch(const logstore::ProcessFacts& process,
                  std::string_view subsystem,
                  std::string_view category) const override
    {
        return m_wanted->mayMatch(process, subsystem, category);
    }

    bool goesOn(std::int64_t reached) const override
    {
        m_pace->look(reached);
        return !m_pace->isCancelled();
    }

private:
    std::shared_ptr<const EntryFilter> m_wanted;
    std::shared_ptr<FetchPace> m_pace;
};

} // namespace

FetchPace::FetchPace(FetchObserver observer, std::int64_t start, std::int64_t end, qint64 maximum)
    : m_observer(std::move(observer))
    , m_start(start)
    , m_end(end)
    , m_maximum(maximum)
{
}

void FetchPace::look(std::int64_t time)
{
    if (m_cancelled || !m_observer || (m_sinceCall.isValid() && !m_sinceCall.hasExpired(interval)))
        return;
    m_progress.reached = QDateTime::fromMSecsSinceEpoch(time / nanosecondsPerMillisecond);
    m_progress.fraction = fraction(time);
    m_cancelled = !m_observer(m_progress);
    m_sinceCall.start(); // after the call: what the observer does is not the fetch's time
}

double FetchPace::fraction(std::int64_t time) const
{
    const auto share = [](double part, double whole) { return whole > 0 ? part / whole : 0.0; };
    const auto number = [](auto value) { return static_cast<double>(value); };
    const double ofMaximum = share(number(m_progress.fetched), number(m_maximum));
    const double ofPeriod = share(number(time) - number(m_start), number(m_end) - number(m_start));
    return std::clamp(std::max(ofMaximum, ofPeriod), 0.0, 1.0);
}

bool walkEntries(const OSLogStore& store,
                 const FetchRange& range,
                 std::shared_ptr<const logstore::EntryFilter> matching,
                 EntryConversion& conversion,
                 FetchObserver observer,
                 QList<LogEntry>& list)
{
    const bool isWatched = static_cast<bool>(observer);
    const auto pace = std::make_shared<FetchPace>(std::move(observer), range.start.time, range.end,
                                                  range.maximum);
    if (matching && isWatched)
        matching = std::make_shared<PacedFilter>(std::move(matching), pace);
    logstore::EntryStream entries = store.getEntries(range.start, std::move(matching));
    while (const logstore::Entry* entry = entries.next()) {
        if (pace->isCancelled())
            return false;
        const std::int64_t time = entry->time();
        std::optional<LogEntry> kept = conversion(*entry);
        if (kept) {
            list.append(std::move(*kept));
            pace->countFetched();
        }
        if (pace->fetched() >= range.maximum || (kept && time > range.end))
            return true;
        if (!pace->step(time))
            return false;
    }
    return !pace->isCancelled();
}
