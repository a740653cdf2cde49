// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/storeindex.h"
#include "platform/logstore/trace/catalog.h"
#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/trace/traceheader.h"

namespace logstore {

/// Walks the outer chunks of one trace file and adds what they tell to a store's index.
class TraceFileIndexer
{
public:
    TraceFileIndexer(StoreIndex& index, std::uint32_t fileNumber)
        : m_index(index)
        , m_fileNumber(fileNumber)
    {
    }

    void run(const File& file);

private:
    bool useHeader(const File& file, std::uint64_t offset, std::uint64_t size);
    void useCatalog(const File& file, std::uint64_t offset, std::uint64_t size);
    void finishCatalog(const File& file);
    void setRange(ChunkSetPlace& place, std::uint64_t first, std::uint64_t last);
    void setRangeFromRecords(ChunkSetPlace& place, const File& file);

    StoreIndex& m_index;
    std::uint32_t m_fileNumber;
    std::uint32_t m_catalog = ChunkSetPlace::noCatalog;
    std::uint32_t m_clock = 0;
    std::vector<SubChunk> m_subChunks;
    std::vector<ChunkSetPlace> m_pending; ///< chunk sets since the last catalog
};

} // namespace logstore
