// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/storeindex.h"
#include "platform/logstore/trace/catalog.h"
#include "platform/logstore/trace/outerchunks.h"
#include "platform/logstore/trace/traceheader.h"

namespace logstore {

/// Walks the outer chunks of one trace file and adds what they tell to a store's index.
class TraceFileIndexer
{
public:
    /// `watch` is called now and then with the offset reached; false ends the walk.
    TraceFileIndexer(StoreIndex& index, std::uint32_t fileNumber, OuterChunks::Watch watch)
        : m_index(index)
        , m_fileNumber(fileNumber)
        , m_watch(std::move(watch))
    {
    }

    void run(const File& file);

private:
    void useHeader(const File& file, const OuterChunk& chunk);
    void useCatalog(const File& file, const OuterChunk& chunk);
    void addChunkSet(const OuterChunk& chunk);
    void finishCatalog();
    void setRange(ChunkSetPlace& place, std::uint64_t first, std::uint64_t last);
    void setRangeFromRecords(ChunkSetPlace& place);
    void addProblem(ProblemKind kind);

    StoreIndex& m_index;
    std::uint32_t m_fileNumber;
    OuterChunks::Watch m_watch;
    std::uint32_t m_catalog = ChunkSetPlace::noCatalog;
    std::optional<std::uint32_t> m_clock; ///< absent after a damaged header
    bool m_isDamaged = false;             ///< the file, up to here
    std::vector<SubChunk> m_subChunks;
    std::vector<ChunkSetPlace> m_pending; ///< chunk sets since the last catalog
};

} // namespace logstore
