// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/uuid.h"

#include <cstdint>
#include <vector>

namespace logstore {

struct TimeRange
{
    std::int64_t earliest;
    std::int64_t latest;
};

/// Turns continuous time (ticks since boot, sleep included) into wall time, for one boot.
/// Wall time is not monotonic in continuous time: corrections of the clock may step back.
class BootClock
{
public:
    /// A moment known on both clocks.
    struct Anchor
    {
        std::uint64_t continuous;
        std::int64_t wall; ///< nanoseconds since 1970-01-01 UTC
    };

    /// `base` holds before the first of `syncs`, which must be sorted by continuous time.
    BootClock(const Uuid& boot,
              std::uint32_t numerator,
              std::uint32_t denominator,
              Anchor base,
              std::vector<Anchor> syncs);

    const Uuid& boot() const { return m_boot; }
    const std::vector<Anchor>& syncs() const { return m_syncs; }

    std::int64_t wallTime(std::uint64_t continuous) const;
    /// The same, for callers whose times come close together: `hint` remembers the interval.
    std::int64_t wallTime(std::uint64_t continuous, std::size_t& hint) const;

    /// Bounds of the wall times of everything from `first` to `last` (continuous, both included).
    TimeRange wallRange(std::uint64_t first, std::uint64_t last) const;

    std::uint64_t nanoseconds(std::uint64_t continuous) const;

private:
    std::size_t interval(std::uint64_t continuous) const;
    std::int64_t wallTimeIn(std::size_t interval, std::uint64_t continuous) const;

    Uuid m_boot;
    std::uint32_t m_numerator;
    std::uint32_t m_denominator;
    std::uint64_t m_fastTicks; ///< this many ticks times the numerator fit 64 bits
    Anchor m_base;
    std::vector<Anchor> m_syncs;
    TimeRange m_syncRange; ///< of the wall times at and just before all syncs
};

} // namespace logstore
