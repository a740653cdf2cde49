// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entryresolver.h"
#include "platform/logstore/openchunkset.h"
#include "platform/logstore/recordselection.h"

#include <map>
#include <memory>

namespace logstore {

/// Merges the chunk sets of a store in time order. A set is unpacked when the merge reaches its
/// earliest time and dropped after its last record, so that memory is bounded by their overlap.
class EntryStreamState
{
public:
    EntryStreamState(std::shared_ptr<StoreIndex> index,
                     std::int64_t from,
                     std::shared_ptr<const EntryFilter> filter);

    const Entry* next();

private:
    bool openDueSets();
    void end();
    void keepForReuse(std::unique_ptr<OpenChunkSet> set);
    void openSet(const ChunkSetPlace& place);
    void keepWithinBudget(const OpenChunkSet* newest);
    OpenChunkSet::Source source();
    std::shared_ptr<KnownCatalog> catalog(const ChunkSetPlace& place);
    bool boundaryIsNext() const;
    void passRecord();
    bool staysOnTop() const;
    bool loadNext();
    bool accepted() const;

    std::shared_ptr<StoreIndex> m_index;
    std::shared_ptr<const EntryFilter> m_filter;
    RecordSelection m_selection;
    EntryResolver m_resolver;
    RecordState m_record;
    Entry m_entry;

    std::size_t m_budget; ///< for the bytes of open sets; grows when sets have to be woken again
    std::size_t m_nextSet;
    std::int64_t m_from;
    std::size_t m_nextBoundary;
    /// A heap: the set whose next record is due first on top.
    std::vector<std::unique_ptr<OpenChunkSet>> m_heap;
    std::vector<std::unique_ptr<OpenChunkSet>> m_spare;
    bool m_topTaken = false; ///< the top's next record has been delivered
    std::size_t m_openBytes = 0;
    std::map<std::uint32_t, std::weak_ptr<KnownCatalog>> m_catalogs;
    std::shared_ptr<KnownCatalog> m_latestCatalog; ///< kept alive from one set to the next
};

} // namespace logstore
