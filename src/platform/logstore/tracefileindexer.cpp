// SPDX-License-Identifier: MIT
#include "platform/logstore/tracefileindexer.h"

#include "platform/logstore/trace/recordtimes.h"
#include "platform/logstore/trace/unpack.h"

#include <algorithm>

namespace logstore {

namespace {

/// All offsets in a catalog are of 16 bits; only its last table may reach beyond.
constexpr std::uint64_t largestCatalog = std::uint64_t{4} << 20;
/// More than 64 MiB packed as badly as can be: what stands behind is not unpacked.
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
    std::uint64_t offset = 0;
    while (file.size() - offset >= ChunkHead::size) {
        std::uint8_t headBytes[ChunkHead::size];
        if (file.readAt(offset, headBytes) < ChunkHead::size)
            break;
        const ChunkHead head = ChunkHead::read(headBytes);
        const std::uint64_t bodyOffset = offset + ChunkHead::size;
        if (head.bodySize > UINT64_MAX - bodyOffset - ChunkHead::padding(head.bodySize))
            break;
        const std::uint64_t bodySize = std::min(head.bodySize, file.size() - bodyOffset);
        if (offset == 0 && head.tag != ChunkTag::Header)
            return;
        switch (head.tag) {
        case ChunkTag::Header:
            if (!useHeader(file, bodyOffset, bodySize)) {
                finishCatalog(file);
                return;
            }
            break;
        case ChunkTag::Catalog:
            finishCatalog(file);
            useCatalog(file, bodyOffset, bodySize);
            break;
        case ChunkTag::ChunkSet:
            if (bodySize >= smallestChunkSet)
                m_pending.push_back(
                    {0, 0, bodyOffset,
                     static_cast<std::uint32_t>(std::min(bodySize, largestChunkSet)), m_fileNumber,
                     m_catalog, m_clock});
            break;
        default: break;
        }
        const std::uint64_t padded = bodySize + ChunkHead::padding(bodySize);
        if (bodySize < head.bodySize || padded > file.size() - bodyOffset)
            break;
        offset = bodyOffset + padded;
    }
    finishCatalog(file);
}

bool TraceFileIndexer::useHeader(const File& file, std::uint64_t offset, std::uint64_t size)
{
    const auto header =
        TraceHeader::read(file.bytesAt(offset, std::min<std::uint64_t>(size, TraceHeader::size)));
    if (!header)
        return false;
    const TimeSync::Boot* boot = m_index.m_times.boot(header->boot);
    const auto known = m_index.m_boots.find(header->boot);
    if (known != m_index.m_boots.end()) {
        m_clock = known->second.clock;
        return true;
    }
    m_clock = static_cast<std::uint32_t>(m_index.m_clocks.size());
    m_index.m_clocks.push_back(boot ? boot->clock(header->boot) : header->clock());
    if (boot)
        m_index.m_boots.insert({header->boot, {m_clock, UINT64_MAX, 0}});
    return true;
}

void TraceFileIndexer::useCatalog(const File& file, std::uint64_t offset, std::uint64_t size)
{
    const auto catalogSize = static_cast<std::uint32_t>(std::min(size, largestCatalog));
    m_catalog = static_cast<std::uint32_t>(m_index.m_catalogs.size());
    m_index.m_catalogs.push_back({offset, catalogSize, m_fileNumber});
    m_subChunks = Catalog::readSubChunks(file.bytesAt(offset, catalogSize));
}

/// The i-th sub-chunk entry tells the range of the i-th chunk set. Where the two do not go
/// together the records themselves are asked, once and for all.
void TraceFileIndexer::finishCatalog(const File& file)
{
    const bool trusted = agrees(m_subChunks, m_pending.size());
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        if (trusted)
            setRange(m_pending[i], m_subChunks[i].earliest, m_subChunks[i].latest);
        else
            setRangeFromRecords(m_pending[i], file);
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

void TraceFileIndexer::setRangeFromRecords(ChunkSetPlace& place, const File& file)
{
    std::vector<std::uint8_t> unpacked;
    unpackChunkSet(file.bytesAt(place.offset, place.size), unpacked);
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
