// SPDX-License-Identifier: MIT
#include "platform/logstore/storeindex.h"

#include "platform/logstore/store.h"
#include "platform/logstore/tracefileindexer.h"

#include <algorithm>
#include <tuple>

namespace logstore {

Result<std::shared_ptr<StoreIndex>> StoreIndex::open(const std::filesystem::path& root)
{
    auto layout = StoreLayout::find(root);
    if (!layout)
        return tl::unexpected(layout.error());
    std::shared_ptr<StoreIndex> index(new StoreIndex(std::move(*layout)));
    for (std::uint32_t number = 0; number < index->m_files.size(); ++number) {
        if (const File* file = index->m_files.file(number)) {
            index->m_traceBytes += file->size();
            TraceFileIndexer(*index, number).run(*file);
        }
    }
    index->sortChunkSets();
    index->addBoundaries();
    return index;
}

StoreIndex::StoreIndex(StoreLayout layout)
    : m_files(std::move(layout.traceFiles))
    , m_times(TimeSync::read(layout.timeFiles))
    , m_strings(std::move(layout.stringFolders), std::move(layout.roots), m_texts)
{
}

void StoreIndex::sortChunkSets()
{
    std::sort(
        m_chunkSets.begin(), m_chunkSets.end(), [](const ChunkSetPlace& a, const ChunkSetPlace& b) {
            return std::tie(a.earliest, a.file, a.offset) < std::tie(b.earliest, b.file, b.offset);
        });
    m_latestSoFar.reserve(m_chunkSets.size());
    std::int64_t latest = Store::beginning;
    for (const ChunkSetPlace& set : m_chunkSets) {
        latest = std::max(latest, set.latest);
        m_latestSoFar.push_back(latest);
    }
}

/// A boot is shown when the time files know it and a trace file holds entries of it; the
/// corrections of the clock are shown from its first entry to its last.
void StoreIndex::addBoundaries()
{
    for (const auto& [uuid, range] : m_boots) {
        if (range.first > range.last)
            continue;
        if (const std::int64_t bootTime = m_times.boot(uuid)->wallTime; bootTime != 0)
            m_boundaries.push_back({bootTime, 0, range.clock, true});
        for (const BootClock::Anchor& sync : m_clocks[range.clock].syncs())
            if (sync.continuous >= range.first && sync.continuous <= range.last)
                m_boundaries.push_back({sync.wall, sync.continuous, range.clock, false});
    }
    std::stable_sort(m_boundaries.begin(), m_boundaries.end(),
                     [](const Boundary& a, const Boundary& b) {
                         return std::tie(a.time, a.clock, a.continuousTime)
                                < std::tie(b.time, b.clock, b.continuousTime);
                     });
}

std::size_t StoreIndex::firstReaching(std::int64_t time) const
{
    return static_cast<std::size_t>(
        std::lower_bound(m_latestSoFar.begin(), m_latestSoFar.end(), time) - m_latestSoFar.begin());
}

std::int64_t StoreIndex::endTime() const
{
    std::int64_t end = m_latestSoFar.empty() ? Store::beginning : m_latestSoFar.back();
    if (!m_boundaries.empty())
        end = std::max(end, m_boundaries.back().time);
    return end;
}

} // namespace logstore
