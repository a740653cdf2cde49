// SPDX-License-Identifier: MIT
#include "platform/logstore/storeindex.h"

#include "platform/logstore/trace/recordtimes.h"
#include "platform/logstore/trace/unpack.h"
#include "platform/logstore/tracefileindexer.h"

#include <algorithm>
#include <tuple>

namespace logstore {

StoreResult<std::shared_ptr<StoreIndex>>
StoreIndex::open(const std::filesystem::path& root, StoreOrigin origin, const OpenWatch& watch)
{
    auto layout = StoreLayout::find(root, origin);
    if (!layout)
        return tl::unexpected(layout.error());
    std::shared_ptr<StoreIndex> index(new StoreIndex(std::move(*layout)));
    if (!index->readFiles(watch))
        return storeProblem(ProblemKind::Cancelled, root);
    if (!index->m_files.anyOpened())
        return tl::unexpected(index->m_problems.list().front());
    index->sortChunkSets();
    index->addBoundaries();
    return index;
}

StoreIndex::StoreIndex(StoreLayout layout)
    : m_problems(std::move(layout.problems))
    , m_files(std::move(layout.traceFiles), m_problems)
    , m_times(TimeSync::read(layout.timeFiles, m_problems))
    , m_strings(std::move(layout.stringFolders), std::move(layout.roots), m_texts, m_problems)
    , m_timeFileCount(layout.timeFiles.size())
{
}

/// Returns false when `watch` has cancelled it.
bool StoreIndex::readFiles(const OpenWatch& watch)
{
    const auto number = [](std::uint64_t value) { return static_cast<double>(value); };
    bool goesOn = true;
    for (std::uint32_t i = 0; goesOn && i < m_files.size(); ++i) {
        const File* const file = m_files.file(i);
        if (!file)
            continue;
        m_traceBytes += file->size();
        const auto look = [&](std::uint64_t reached) {
            const double ofFile =
                number(reached) / number(std::max<std::uint64_t>(file->size(), 1));
            goesOn = goesOn && (!watch || watch((i + ofFile) / number(m_files.size())));
            return goesOn;
        };
        TraceFileIndexer(*this, i, look).run(*file);
        look(file->size());
    }
    return goesOn;
}

void StoreIndex::unpack(const ChunkSetPlace& set, std::vector<std::uint8_t>& out)
{
    out.clear();
    const File* const file = m_files.file(set.file);
    if (!file)
        return;
    const auto body = file->bytesAt(set.offset, set.size);
    const std::string path = m_files.path(set.file).string();
    if (body.size() < set.size)
        m_problems.add({ProblemKind::CutShort, path});
    switch (unpackChunkSet(body, out)) {
    case Unpacked::Whole: break;
    case Unpacked::Damaged: m_problems.add({ProblemKind::DamagedChunks, path}); break;
    case Unpacked::UnknownCompression:
        m_problems.add({ProblemKind::UnknownCompression, path});
        break;
    }
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

/// Reads the sets that end last according to their catalogs: a catalog may be damaged, and it
/// counts oversize chunks, which are no entries.
std::int64_t StoreIndex::findEndTime()
{
    constexpr int mostAsked = 256; // else a crafted store would be read as a whole
    std::int64_t end = m_boundaries.empty() ? Store::beginning : m_boundaries.back().time;
    const auto endsBefore = [](const ChunkSetPlace* a, const ChunkSetPlace* b) {
        return a->latest < b->latest;
    };
    std::vector<const ChunkSetPlace*> sets;
    for (const ChunkSetPlace& set : m_chunkSets)
        sets.push_back(&set);
    std::make_heap(sets.begin(), sets.end(), endsBefore);
    for (int asked = 0; asked < mostAsked && !sets.empty() && sets.front()->latest > end; ++asked) {
        end = std::max(end, lastEntryTime(*sets.front()));
        std::pop_heap(sets.begin(), sets.end(), endsBefore);
        sets.pop_back();
    }
    return end;
}

std::int64_t StoreIndex::lastEntryTime(const ChunkSetPlace& set)
{
    std::int64_t last = Store::beginning;
    std::vector<std::uint8_t> unpacked;
    unpack(set, unpacked);
    forEachTime(unpacked, [&](ChunkTag tag, std::uint64_t time) {
        if (tag != ChunkTag::Oversize)
            last = std::max(last, m_clocks[set.clock].wallTime(time));
    });
    return last;
}

std::int64_t StoreIndex::endTime()
{
    if (!m_endTime)
        m_endTime = findEndTime();
    return *m_endTime;
}

} // namespace logstore
