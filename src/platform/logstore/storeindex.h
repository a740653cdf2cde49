// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/filepool.h"
#include "platform/logstore/store.h"
#include "platform/logstore/storelayout.h"
#include "platform/logstore/strings/stringfiles.h"
#include "platform/logstore/trace/timesync.h"

#include <memory>
#include <optional>

namespace logstore {

/// The place of a chunk set, and the time it covers.
struct ChunkSetPlace
{
    static constexpr std::uint32_t noCatalog = UINT32_MAX;

    std::int64_t earliest; ///< bounds of its records' wall times
    std::int64_t latest;
    std::uint64_t offset; ///< of the body in the file
    std::uint32_t size;   ///< of the body
    std::uint32_t file;
    std::uint32_t catalog; ///< index, or noCatalog
    std::uint32_t clock;   ///< index
};

struct CatalogPlace
{
    std::uint64_t offset;
    std::uint32_t size;
    std::uint32_t file;
};

/// An entry made from the time files: a start of the system, or a correction of its clock.
struct Boundary
{
    std::int64_t time;
    std::uint64_t continuousTime;
    std::uint32_t clock; ///< index
    bool isBoot;
};

/// What the heads and catalogs of all trace files tell, read in one pass without unpacking.
class StoreIndex
{
public:
    static StoreResult<std::shared_ptr<StoreIndex>>
    open(const std::filesystem::path& root, StoreOrigin origin, const OpenWatch& watch);

    const std::vector<ChunkSetPlace>& chunkSets() const
    {
        return m_chunkSets;
    } ///< by earliest, file, offset
    const std::vector<Boundary>& boundaries() const { return m_boundaries; } ///< by time
    const BootClock& clock(std::uint32_t index) const { return m_clocks[index]; }
    const CatalogPlace& catalog(std::uint32_t index) const { return m_catalogs[index]; }

    /// The first of chunkSets() that may hold entries at or after `time`. Later ones may not.
    std::size_t firstReaching(std::int64_t time) const;

    /// The time of the last entry. Found the first time it is asked for.
    std::int64_t endTime();
    std::uint64_t traceBytes() const { return m_traceBytes; }
    std::size_t fileCount() const { return m_files.size() + m_timeFileCount; }

    /// Unpacks a chunk set into `out`, as far as it can be read.
    void unpack(const ChunkSetPlace& set, std::vector<std::uint8_t>& out);

    // Shared by all streams of the store, which live on one thread.
    StoreProblems& problems() { return m_problems; }
    FilePool& files() { return m_files; }
    TextPool& texts() { return m_texts; }
    StringFiles& strings() { return m_strings; }

private:
    friend class TraceFileIndexer;

    explicit StoreIndex(StoreLayout layout);
    bool readFiles(const OpenWatch& watch);
    void addBoundaries();
    void sortChunkSets();
    std::int64_t findEndTime();
    std::int64_t lastEntryTime(const ChunkSetPlace& set);

    /// Range of continuous time of a boot's entries.
    struct BootRange
    {
        std::uint32_t clock;
        std::uint64_t first;
        std::uint64_t last;
    };

    StoreProblems m_problems;
    FilePool m_files;
    TimeSync m_times;
    TextPool m_texts;
    StringFiles m_strings;
    std::vector<BootClock> m_clocks;
    std::unordered_map<Uuid, BootRange, UuidHash> m_boots; ///< those that the time files know
    std::vector<CatalogPlace> m_catalogs;
    std::vector<ChunkSetPlace> m_chunkSets;
    std::vector<std::int64_t> m_latestSoFar; ///< the greatest `latest` up to each chunk set
    std::vector<Boundary> m_boundaries;
    std::optional<std::int64_t> m_endTime;
    std::uint64_t m_traceBytes = 0;
    std::size_t m_timeFileCount;
};

} // namespace logstore
