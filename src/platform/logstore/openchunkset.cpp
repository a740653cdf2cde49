// SPDX-License-Identifier: MIT
#include "platform/logstore/openchunkset.h"

#include "platform/logstore/oversizestore.h"
#include "platform/logstore/trace/innerchunks.h"

#include <algorithm>

namespace logstore {

void OpenChunkSet::open(const ChunkSetPlace& place,
                        std::shared_ptr<KnownCatalog> catalog,
                        Source source)
{
    m_place = &place;
    m_next = 0;
    m_timesWoken = 0;
    unpack(std::move(catalog), source);
    if (!atEnd())
        m_nextTime = m_records[m_next].time;
}

void OpenChunkSet::sleep()
{
    m_asleep = true;
    m_catalog.reset();
    // Assigning {} would empty the vectors and keep their memory.
    m_unpacked = std::vector<std::uint8_t>();
    m_chunks = std::vector<InnerChunk>();
    m_records = std::vector<RecordPlace>();
}

void OpenChunkSet::wake(std::shared_ptr<KnownCatalog> catalog, Source source)
{
    unpack(std::move(catalog), source);
    m_asleep = false;
    ++m_timesWoken;
    // The file may have changed meanwhile: what is gone is not delivered.
    m_next = std::min(m_next, m_recordCount);
}

void OpenChunkSet::advance()
{
    ++m_next;
    if (!atEnd())
        m_nextTime = m_records[m_next].time;
}

std::size_t OpenChunkSet::bytes() const
{
    return m_unpacked.capacity() + m_chunks.capacity() * sizeof(InnerChunk)
           + m_records.capacity() * sizeof(RecordPlace);
}

void OpenChunkSet::unpack(std::shared_ptr<KnownCatalog> catalog, Source source)
{
    m_asleep = false;
    m_catalog = std::move(catalog);
    m_chunks.clear();
    m_records.clear();
    source.index.unpack(*m_place, m_unpacked);
    forEachInnerChunk(m_unpacked, [this, &source](ChunkTag tag, Bytes body) {
        InnerChunk chunk{tag, body, {}, nullptr};
        ByteReader in(body);
        if (m_catalog)
            chunk.process = m_catalog->find(ProcessKey::read(in));
        if (!source.selection.mayMatch(chunk.process))
            return;
        if (tag == ChunkTag::Oversize) {
            source.oversize.add(*m_place, static_cast<std::size_t>(body.data() - m_unpacked.data()),
                                body);
            return;
        }
        if (tag == ChunkTag::Firehose) {
            if (!source.selection.mayMatchFirehose(m_catalog.get(), chunk.process))
                return;
            chunk.firehose = FirehoseChunk::read(body);
        }
        m_chunks.push_back(chunk);
        addRecords(m_chunks.size() - 1, source);
    });
    std::sort(m_records.begin(), m_records.end(), [](const RecordPlace& a, const RecordPlace& b) {
        return a.time != b.time ? a.time < b.time : a.position < b.position;
    });
    m_recordCount = m_records.size();
}

void OpenChunkSet::addRecords(std::size_t chunkNumber, Source source)
{
    const InnerChunk& chunk = m_chunks[chunkNumber];
    if (chunk.tag != ChunkTag::Firehose) {
        addRecord(dumpTime(chunk.body), chunkNumber, 0, source);
        return;
    }
    const bool filtered = source.selection.hasFilter();
    chunk.firehose.forEachRecord([&](std::size_t offset, const RecordHead& head) {
        if (!filtered
            || source.selection.mayMatch(m_catalog.get(), chunk.process, head,
                                         chunk.firehose.recordData(offset, head)))
            addRecord(chunk.firehose.continuousTime(head), chunkNumber, offset, source);
    });
}

void OpenChunkSet::addRecord(std::uint64_t continuousTime,
                             std::size_t chunkNumber,
                             std::size_t offset,
                             Source source)
{
    const std::int64_t time =
        source.index.clock(m_place->clock).wallTime(continuousTime, m_clockHint);
    if (source.selection.reaches(time))
        m_records.push_back({time, std::uint64_t{chunkNumber} << 32 | offset});
}

} // namespace logstore
