// SPDX-License-Identifier: MIT
#include "platform/logstore/tracefileindexer.h"

#include "platform/logstore/trace/blocks.h"
#include "platform/logstore/trace/firehose.h"
#include "platform/logstore/trace/innerchunks.h"

#include <algorithm>

namespace logstore {

namespace {

/// All offsets in a catalog are of 16 bits; only its last table may reach beyond.
constexpr std::uint64_t largestCatalog = std::uint64_t{4} << 20;
constexpr std::uint64_t largestChunkSet = std::uint64_t{64} << 20;
constexpr std::uint64_t smallestChunkSet = 12; ///< the head of one block and the end marker

bool agrees(const std::vector<SubChunk>& subChunks, std::size_t chunkSetCount)
{
    return subChunks.size() == chunkSetCount
           && std::all_of(subChunks.begin(), subChunks.end(), [](const SubChunk& sub) {
                  return sub.earliest <= sub.latest && sub.compression == SubChunk::lz4;
              });
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
        const std::uint64_t bodySize = std::min(head.bodySize, file.size() - bodyOffset);
        if (offset == 0 && head.tag != ChunkTag::Header)
            return;
        switch (head.tag) {
        case ChunkTag::Header:
            finishCatalog(file);
            if (!useHeader(file, bodyOffset, bodySize))
                return;
            break;
        case ChunkTag::Catalog:
            finishCatalog(file);
            useCatalog(file, bodyOffset, bodySize);
            break;
        case ChunkTag::ChunkSet:
            if (bodySize >= smallestChunkSet && bodySize <= largestChunkSet)
                m_pending.push_back({0, 0, bodyOffset, static_cast<std::uint32_t>(bodySize),
                                     m_fileNumber, m_catalog, m_clock});
            break;
        default: break;
        }
        const std::uint64_t padded = (bodySize + 7) / 8 * 8;
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
    m_catalog = ChunkSetPlace::noCatalog;
    const TimeSync::Boot* boot = m_index.m_times.boot(header->boot);
    m_timesKnown = boot != nullptr;
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
    if (!m_timesKnown)
        return;
    StoreIndex::BootRange& boot = m_index.m_boots.at(clock.boot());
    boot.first = std::min(boot.first, first);
    boot.last = std::max(boot.last, last);
}

void TraceFileIndexer::setRangeFromRecords(ChunkSetPlace& place, const File& file)
{
    std::vector<std::uint8_t> unpacked;
    unpackBlocks(file.bytesAt(place.offset, place.size), unpacked);
    std::uint64_t first = UINT64_MAX;
    std::uint64_t last = 0;
    const auto include = [&first, &last](std::uint64_t time) {
        first = std::min(first, time);
        last = std::max(last, time);
    };
    forEachInnerChunk(unpacked, [&include](ChunkTag tag, Bytes body) {
        if (tag != ChunkTag::Firehose) {
            include(dumpTime(body));
            return;
        }
        const FirehoseChunk chunk = FirehoseChunk::read(body);
        chunk.forEachRecord(
            [&](std::size_t, const RecordHead& head) { include(chunk.continuousTime(head)); });
    });
    if (first <= last)
        setRange(place, first, last);
}

} // namespace logstore
