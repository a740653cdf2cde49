// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/knowncatalog.h"
#include "platform/logstore/recordselection.h"
#include "platform/logstore/storeindex.h"
#include "platform/logstore/trace/firehose.h"

#include <memory>

namespace logstore {

class OversizeStore;

/// A chunk inside a chunk set.
struct InnerChunk
{
    ChunkTag tag;
    Bytes body;
    FirehoseChunk firehose;          ///< of firehose chunks
    KnownProcess* process = nullptr; ///< null when the catalog does not know it
};

/// An unpacked chunk set with its records in time order. Putting it to sleep frees its memory and
/// keeps its position; waking unpacks it again.
class OpenChunkSet
{
public:
    /// What is needed to unpack a chunk set.
    struct Source
    {
        StoreIndex& index;
        OversizeStore& oversize;
        RecordSelection& selection;
    };

    /// Unpacks the chunk set. `catalog` may be null.
    void open(const ChunkSetPlace& place, std::shared_ptr<KnownCatalog> catalog, Source source);

    void sleep();
    void wake(std::shared_ptr<KnownCatalog> catalog, Source source);
    bool isAsleep() const { return m_asleep; }
    int timesWoken() const { return m_timesWoken; }

    const ChunkSetPlace& place() const { return *m_place; }
    KnownCatalog* catalog() const { return m_catalog.get(); }

    bool atEnd() const { return m_next == m_recordCount; }
    /// The time of the next record; only while not atEnd(). Known also while asleep.
    std::int64_t nextTime() const { return m_nextTime; }
    void advance();

    const InnerChunk& nextChunk() const { return m_chunks[m_records[m_next].position >> 32]; }
    /// Of a record in a firehose chunk, the offset of its head.
    std::size_t nextOffset() const { return m_records[m_next].position & 0xffffffff; }

    /// Bytes held, roughly.
    std::size_t bytes() const;

private:
    struct RecordPlace
    {
        std::int64_t time;
        std::uint64_t
            position; ///< number of the inner chunk in the upper half, offset in the lower
    };

    void unpack(std::shared_ptr<KnownCatalog> catalog, Source source);
    void addRecords(std::size_t chunkNumber, Source source);
    void addRecord(std::uint64_t continuousTime,
                   std::size_t chunkNumber,
                   std::size_t offset,
                   Source source);

    const ChunkSetPlace* m_place = nullptr;
    std::shared_ptr<KnownCatalog> m_catalog;
    std::vector<std::uint8_t> m_unpacked;
    std::vector<InnerChunk> m_chunks;
    std::vector<RecordPlace> m_records;
    std::size_t m_recordCount = 0;
    std::size_t m_next = 0;
    std::int64_t m_nextTime = 0;
    std::size_t m_clockHint = 0;
    bool m_asleep = false;
    int m_timesWoken = 0;
};

} // namespace logstore
