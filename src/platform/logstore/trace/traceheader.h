// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"
#include "platform/logstore/trace/bootclock.h"

#include <optional>

namespace logstore {

/// The header chunk of a trace file: the boot it belongs to and a moment known on both clocks.
struct TraceHeader
{
    static constexpr std::size_t size = 208;

    std::uint32_t numerator;
    std::uint32_t denominator;
    BootClock::Anchor start;
    Uuid boot;

    /// Absent when the body is shorter than `size`.
    static std::optional<TraceHeader> read(Bytes body);

    /// The clock that the header alone gives, for boots that no time file knows.
    BootClock clock() const { return {boot, numerator, denominator, start, {}}; }
};

} // namespace logstore
