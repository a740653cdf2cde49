// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/record.h"

#include <cstdint>
#include <string>

namespace logstore::writer {

/// What a trace file tells of its machine and its start.
struct Header
{
    std::uint32_t numerator = 1; ///< nanoseconds per tick, as a fraction
    std::uint32_t denominator = 1;
    std::int64_t wallTime = 0; ///< of the start, nanoseconds since 1970, kept to the microsecond
    std::uint64_t continuousTime = 0; ///< of the start
    std::int32_t zone = 0;            ///< minutes west of Greenwich
    bool daylightSaving = false;
    Uuid boot{};
    std::string build = "24B83";
    std::string model = "Demonstration1,1";
    std::int32_t daemon = 90;
    std::string zoneFile = "/var/db/timezone/zoneinfo/UTC";
    Edit edit{}; ///< of the body
};

Bytes body(const Header& header);

} // namespace logstore::writer
