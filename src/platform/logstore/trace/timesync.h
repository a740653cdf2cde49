// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"
#include "platform/logstore/storeproblems.h"
#include "platform/logstore/trace/bootclock.h"

#include <filesystem>
#include <unordered_map>

namespace logstore {

/// What the time files of a store know of its boots.
class TimeSync
{
public:
    /// Reads the files in the given order. Damaged ones are read as far as they go; `problems`
    /// takes their names.
    static TimeSync read(const std::vector<std::filesystem::path>& files, StoreProblems& problems);

    struct Boot
    {
        std::uint32_t numerator = 1;
        std::uint32_t denominator = 1;
        std::int64_t wallTime = 0;            ///< of the boot, 0 when unknown
        std::vector<BootClock::Anchor> syncs; ///< in the order of the files

        BootClock clock(const Uuid& uuid) const;
    };

    /// Null for a boot that no time file knows.
    const Boot* boot(const Uuid& uuid) const;

    /// Adds the records of one file. Returns false when they end before the file does.
    bool addRecords(Bytes file);

private:
    std::unordered_map<Uuid, Boot, UuidHash> m_boots;
};

} // namespace logstore
