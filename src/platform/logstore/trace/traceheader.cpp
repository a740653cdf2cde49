// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/traceheader.h"

#include "platform/base/arithmetic.h"
#include "platform/base/timeunits.h"

namespace logstore {

// offset  size  field
//      0  4, 4  time base, numerator and denominator
//      8     8  start on the clock that stops during sleep: not the one that records use
//     16     8  wall time of the start, seconds
//     24     4  its microseconds
//     48     8  continuous time of the start
//    128    16  boot identifier
std::optional<TraceHeader> TraceHeader::read(Bytes body)
{
    if (body.size() < size)
        return std::nullopt;
    const Int128 seconds = loadAt<std::int64_t>(body, 16);
    const Int128 microseconds = loadAt<std::int32_t>(body, 24);
    TraceHeader header{};
    header.numerator = loadAt<std::uint32_t>(body, 0);
    header.denominator = loadAt<std::uint32_t>(body, 4);
    header.start = {
        loadAt<std::uint64_t>(body, 48),
        saturated(seconds * nanosecondsPerSecond + microseconds * nanosecondsPerMicrosecond)};
    header.boot = loadAt<Uuid>(body, 128);
    return header;
}

} // namespace logstore
