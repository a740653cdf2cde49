// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/timesync.h"

#include "platform/logstore/bytes/file.h"

#include <algorithm>

namespace logstore {

namespace {

constexpr std::uint16_t bootSignature = 0xbbb0;
constexpr std::uint16_t syncSignature = 0x7354; // "Ts"
constexpr std::uint16_t bootSize = 48;
constexpr std::uint16_t syncSize = 32;
constexpr std::size_t headSize = 4;
constexpr std::uint64_t longestFile = std::uint64_t{256} << 20;

} // namespace

TimeSync TimeSync::read(const std::vector<std::filesystem::path>& files, StoreProblems& problems)
{
    TimeSync times;
    for (const auto& path : files) {
        const auto file = File::open(path);
        if (!file)
            problems.add(file.error());
        else if (!times.addRecords(file->bytesAt(0, std::min(file->size(), longestFile))))
            problems.add({ProblemKind::DamagedTimes, path.string()});
    }
    return times;
}

// A boot record (48 bytes)                       a sync record (32 bytes)
//  0  u16 signature, u16 size, u32 0              0  u16 signature, u16 size, u32 flags
//  8  uuid of the boot                            8  u64 continuous time
// 24  u32 numerator, u32 denominator             16  i64 wall time, ns
// 32  i64 wall time of the boot, ns              24  i32 zone, u32 daylight saving
// 40  i32 zone, u32 daylight saving
bool TimeSync::addRecords(Bytes file)
{
    Boot* current = nullptr;
    while (!file.empty()) {
        const auto signature = loadAt<std::uint16_t>(file);
        const auto size = loadAt<std::uint16_t>(file, 2);
        const std::uint16_t known = signature == bootSignature   ? bootSize
                                    : signature == syncSignature ? syncSize
                                                                 : 0;
        if (known == 0 || size < known || size > file.size())
            return false;
        ByteReader record(file.subspan(headSize, size - headSize));
        record.skip(4);
        if (signature == bootSignature) {
            const auto [place, isNew] = m_boots.try_emplace(record.read<Uuid>());
            current = &place->second;
            if (isNew) {
                current->numerator = record.read<std::uint32_t>();
                current->denominator = record.read<std::uint32_t>();
                current->wallTime = record.read<std::int64_t>();
            }
        } else if (current) {
            const auto continuous = record.read<std::uint64_t>();
            current->syncs.push_back({continuous, record.read<std::int64_t>()});
        }
        file = file.subspan(size);
    }
    return true;
}

const TimeSync::Boot* TimeSync::boot(const Uuid& uuid) const
{
    const auto found = m_boots.find(uuid);
    return found == m_boots.end() ? nullptr : &found->second;
}

/// Of two records with the same continuous time both are kept, as both are shown; the later one
/// sets the clock.
BootClock TimeSync::Boot::clock(const Uuid& uuid) const
{
    std::vector<BootClock::Anchor> sorted = syncs;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const BootClock::Anchor& a, const BootClock::Anchor& b) {
                         return a.continuous < b.continuous;
                     });
    BootClock::Anchor base{0, wallTime};
    if (wallTime == 0 && !sorted.empty())
        base = sorted.front();
    return {uuid, numerator, denominator, base, std::move(sorted)};
}

} // namespace logstore
