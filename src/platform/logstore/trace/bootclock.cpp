// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/bootclock.h"

#include "platform/base/arithmetic.h"

#include <algorithm>

namespace logstore {

namespace {

/// For a range with more clock corrections than these, the bounds of all corrections are used:
/// looser, but fast for crafted stores.
constexpr std::size_t exactSyncs = 4096;

void include(TimeRange& range, std::int64_t time)
{
    range.earliest = std::min(range.earliest, time);
    range.latest = std::max(range.latest, time);
}

} // namespace

BootClock::BootClock(const Uuid& boot,
                     std::uint32_t numerator,
                     std::uint32_t denominator,
                     Anchor base,
                     std::vector<Anchor> syncs)
    : m_boot(boot)
    , m_numerator(numerator == 0 ? 1 : numerator)
    , m_denominator(denominator == 0 ? 1 : denominator)
    , m_fastTicks(static_cast<std::uint64_t>(INT64_MAX) / m_numerator)
    , m_base(base)
    , m_syncs(std::move(syncs))
    , m_syncRange{base.wall, base.wall}
{
    for (std::size_t i = 0; i < m_syncs.size(); ++i) {
        include(m_syncRange, m_syncs[i].wall);
        include(m_syncRange,
                wallTimeIn(i, m_syncs[i].continuous == 0 ? 0 : m_syncs[i].continuous - 1));
    }
}

/// 0 is the time before the first sync, i the time from sync i - 1 on.
std::size_t BootClock::interval(std::uint64_t continuous) const
{
    const auto after = std::upper_bound(
        m_syncs.begin(), m_syncs.end(), continuous,
        [](std::uint64_t value, const Anchor& sync) { return value < sync.continuous; });
    return static_cast<std::size_t>(after - m_syncs.begin());
}

std::int64_t BootClock::wallTimeIn(std::size_t interval, std::uint64_t continuous) const
{
    const Anchor& anchor = interval == 0 ? m_base : m_syncs[interval - 1];
    // The common case stays clear of 128-bit division.
    if (continuous >= anchor.continuous && continuous - anchor.continuous <= m_fastTicks)
        return saturated(Int128{anchor.wall}
                         + (continuous - anchor.continuous) * m_numerator / m_denominator);
    const Int128 ticks = Int128{continuous} - Int128{anchor.continuous};
    return saturated(anchor.wall + ticks * m_numerator / m_denominator);
}

std::int64_t BootClock::wallTime(std::uint64_t continuous) const
{
    return wallTimeIn(interval(continuous), continuous);
}

std::int64_t BootClock::wallTime(std::uint64_t continuous, std::size_t& hint) const
{
    const bool holds = hint <= m_syncs.size()
                       && (hint == 0 || m_syncs[hint - 1].continuous <= continuous)
                       && (hint == m_syncs.size() || continuous < m_syncs[hint].continuous);
    if (!holds)
        hint = interval(continuous);
    return wallTimeIn(hint, continuous);
}

TimeRange BootClock::wallRange(std::uint64_t first, std::uint64_t last) const
{
    TimeRange range{wallTime(first), wallTime(first)};
    include(range, wallTime(last));
    const std::size_t begin = interval(first);
    const std::size_t end = interval(last);
    if (end - begin > exactSyncs) {
        include(range, m_syncRange.earliest);
        include(range, m_syncRange.latest);
        return range;
    }
    for (std::size_t i = begin; i < end; ++i) {
        include(range, m_syncs[i].wall);
        include(range, wallTimeIn(i, m_syncs[i].continuous - 1));
    }
    return range;
}

std::uint64_t BootClock::nanoseconds(std::uint64_t continuous) const
{
    return static_cast<std::uint64_t>(saturated(Int128{continuous} * m_numerator / m_denominator));
}

} // namespace logstore
