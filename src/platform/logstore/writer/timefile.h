// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"

#include <cstdint>
#include <vector>

namespace logstore::writer {

/// A moment when the wall clock was known.
struct Sync
{
    std::uint64_t continuousTime = 0;
    std::int64_t wallTime = 0; ///< nanoseconds since 1970
    std::int32_t zone = 0;     ///< minutes west of Greenwich
    bool daylightSaving = false;
};

struct Boot
{
    Uuid uuid{};
    std::uint32_t numerator = 1; ///< nanoseconds per tick, as a fraction
    std::uint32_t denominator = 1;
    std::int64_t wallTime = 0; ///< nanoseconds since 1970, 0 = not known
    std::vector<Sync> syncs{};
};

Bytes timeFileBytes(const std::vector<Boot>& boots);

} // namespace logstore::writer
