// SPDX-License-Identifier: MIT
#include "platform/logstore/tracefileindexer.h"

#include "platform/logstore/trace/recordtimes.h"

#include <algorithm>
#include <utility>

namespace logstore {

namespace {

/// All offsets in a catalog are of 16 bits; only its last table may reach beyond.
constexpr std::uint64_t largestCatalog = std::uint64_t{4} << 20;
/// 64 MiB, packed as badly as possible; what follows is not unpacked.
constexpr std::uint64_t largestChunkSet = std::uint64_t{65} << 20;
constexpr std::uint64_t smallestChunkSet = 12; ///< the head of one block and the end marker

bool agrees(const std::vector<SubChunk>& subChunks, std::size_t chunkSetCount)
{
    return subChunks.size() == chunkSetCount
           && std::all_of(subChunks.begin(), subChunks.end(),
                          [](const SubChunk& sub) { return sub.earliest <= sub.latest; });
}

} // namespace

void TraceFileIndexer::run(const File& file)
{
    OuterChunks chunks(file, m_watch);
    bool isFirst = true;
    while (const auto chunk = chunks.next()) {
        m_isDamaged = chunks.damagedPieces() > 0;
        if (std::exchange(isFirst, false) && chunk->tag != ChunkTag::Header)
            return addProblem(ProblemKind::NotATraceFile);
        switch (chunk->tag) {
        case ChunkTag::Header: useHeader(file, *chunk); break;
        case ChunkTag::Catalog:
            finishCatalog();
            useCatalog(file, *chunk);
            break;
        default: addChunkSet(*chunk);
        }
    }
    m_isDamaged = chunks.damagedPieces() > 0;
    if (isFirst && file.size() > 0)
        addProblem(ProblemKind::NotATraceFile);
    else if (m_isDamaged)
        addProblem(ProblemKind::DamagedChunks);
    finishCatalog();
}

void TraceFileIndexer::addProblem(ProblemKind kind)
{
    m_index.m_problems.add({kind, m_index.m_files.path(m_fileNumber).string()});
}

void TraceFileIndexer::useHeader(const File& file, const OuterChunk& chunk)
{
    m_clock.reset();
    const auto header = TraceHeader::read(
        file.bytesAt(chunk.offset, std::min<std::uint64_t>(chunk.size, TraceHeader::size)));
    if (!header)
        return addProblem(ProblemKind::DamagedChunks);
    const auto known = m_index.m_boots.find(header->boot);
    if (known != m_index.m_boots.end()) {
        m_clock = known->second.clock;
        return;
    }
    const TimeSync::Boot* boot = m_index.m_times.boot(header->boot);
    m_clock = static_cast<std::uint32_t>(m_index.m_clocks.size());
    m_index.m_clocks.push_back(boot ? boot->clock(header->boot) : header->clock());
    if (boot)
        m_index.m_boots.insert({header->boot, {*m_clock, UINT64_MAX, 0}});
}

void TraceFileIndexer::useCatalog(const File& file, const OuterChunk& chunk)
{
    const auto size = static_cast<std::uint32_t>(std::min(chunk.size, largestCatalog));
    m_catalog = static_cast<std::uint32_t>(m_index.m_catalogs.size());
    m_index.m_catalogs.push_back({chunk.offset, size, m_fileNumber});
    m_subChunks = Catalog::readSubChunks(file.bytesAt(chunk.offset, size));
}

void TraceFileIndexer::addChunkSet(const OuterChunk& chunk)
{
    if (!m_clock || chunk.size < smallestChunkSet)
        return;
    // A catalog knows how many sets follow it: one more belongs to a catalog that is lost.
    if (m_isDamaged && !m_subChunks.empty() && m_pending.size() >= m_subChunks.size()) {
        finishCatalog();
        m_catalog = ChunkSetPlace::noCatalog;
    }
    m_pending.push_back({0, 0, chunk.offset,
                         static_cast<std::uint32_t>(std::min(chunk.size, largestChunkSet)),
                         m_fileNumber, m_catalog, *m_clock});
}

/// The i-th sub-chunk entry has the times of the i-th chunk set. When they do not fit together, or
/// after damage, the times are read from the records.
void TraceFileIndexer::finishCatalog()
{
    const bool trusted = !m_isDamaged && agrees(m_subChunks, m_pending.size());
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        if (trusted)
            setRange(m_pending[i], m_subChunks[i].earliest, m_subChunks[i].latest);
        else if (!m_watch || m_watch(m_pending[i].offset))
            setRangeFromRecords(m_pending[i]);
    }
    m_pending.clear();
    m_subChunks.clear();
}

void TraceFileIndexer::setRange(ChunkSetPlace& place, std::uint64_t first, std::uint64_t last)
{
    const BootClock& clock = m_index.m_clocks[place.clock];
    const TimeRange range = clock.wallRange(first, last);
    place.earliest = range.earliest;
    place.latest = range.latest;
    m_index.m_chunkSets.push_back(place);
    const auto boot = m_index.m_boots.find(clock.boot());
    if (boot == m_index.m_boots.end())
        return;
    boot->second.first = std::min(boot->second.first, first);
    boot->second.last = std::max(boot->second.last, last);
}

void TraceFileIndexer::setRangeFromRecords(ChunkSetPlace& place)
{
    std::vector<std::uint8_t> unpacked;
    m_index.unpack(place, unpacked);
    std::uint64_t first = UINT64_MAX;
    std::uint64_t last = 0;
    forEachTime(unpacked, [&first, &last](ChunkTag, std::uint64_t time) {
        first = std::min(first, time);
        last = std::max(last, time);
    });
    if (first <= last)
        setRange(place, first, last);
}

} // namespace logstore
