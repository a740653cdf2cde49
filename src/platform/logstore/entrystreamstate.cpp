// SPDX-License-Identifier: MIT
#include "platform/logstore/entrystreamstate.h"

#include <algorithm>
#include <tuple>

namespace logstore {

namespace {

/// What unpacked chunk sets may take together before the farthest one is put to sleep.
constexpr std::size_t usualBudget = std::size_t{24} << 20;
constexpr std::size_t largestBudget = std::size_t{128} << 20;
constexpr std::size_t mostSpareSets = 4;
constexpr std::size_t largestSpareSet = std::size_t{1} << 20;

/// For a heap with the earliest record on top: true when `a` is due after `b`.
bool isLater(const std::unique_ptr<OpenChunkSet>& a, const std::unique_ptr<OpenChunkSet>& b)
{
    if (a->nextTime() != b->nextTime())
        return a->nextTime() > b->nextTime();
    return std::tie(a->place().file, a->place().offset)
           > std::tie(b->place().file, b->place().offset);
}

} // namespace

EntryStreamState::EntryStreamState(std::shared_ptr<StoreIndex> index,
                                   std::int64_t from,
                                   std::shared_ptr<const EntryFilter> filter)
    : m_index(std::move(index))
    , m_filter(std::move(filter))
    , m_selection(from, m_filter.get(), m_index->strings(), m_index->texts())
    , m_resolver(*m_index)
    , m_entry(m_resolver, m_record)
    , m_budget(usualBudget)
    , m_nextSet(m_index->firstReaching(from))
    , m_from(from)
{
    m_record.time = from;
    const auto& boundaries = m_index->boundaries();
    m_nextBoundary =
        static_cast<std::size_t>(std::lower_bound(boundaries.begin(), boundaries.end(), from,
                                                  [](const Boundary& boundary, std::int64_t time) {
                                                      return boundary.time < time;
                                                  })
                                 - boundaries.begin());
}

const Entry* EntryStreamState::next()
{
    while (loadNext())
        if (accepted())
            return &m_entry;
    return nullptr;
}

bool EntryStreamState::accepted() const
{
    return !m_filter || m_filter->matches(m_entry);
}

/// Makes the record state stand for the next whole record or boundary.
bool EntryStreamState::loadNext()
{
    for (;;) {
        m_index->strings().trim();
        passRecord();
        const bool haveSet = openDueSets();
        if (boundaryIsNext()) {
            EntryResolver::load(m_record, m_index->boundaries()[m_nextBoundary++]);
            return true;
        }
        if (!haveSet)
            return false;
        m_topTaken = true;
        if (EntryResolver::load(m_record, *m_heap.front()))
            return true;
    }
}

/// Moves the top past the record that was delivered last.
void EntryStreamState::passRecord()
{
    if (!m_topTaken)
        return;
    m_topTaken = false;
    m_heap.front()->advance();
    if (!m_heap.front()->atEnd() && staysOnTop())
        return;
    std::pop_heap(m_heap.begin(), m_heap.end(), isLater);
    OpenChunkSet& set = *m_heap.back();
    if (!set.atEnd()) {
        std::push_heap(m_heap.begin(), m_heap.end(), isLater);
        return;
    }
    m_openBytes -= set.bytes();
    keepForReuse(std::move(m_heap.back()));
    m_heap.pop_back();
}

/// Keeps a set of the usual size, so that the next one needs no allocations.
void EntryStreamState::keepForReuse(std::unique_ptr<OpenChunkSet> set)
{
    if (m_spare.size() < mostSpareSets && set->bytes() <= largestSpareSet)
        m_spare.push_back(std::move(set));
}

/// Whether the top set is still due first after it has advanced. Records come in runs.
bool EntryStreamState::staysOnTop() const
{
    for (std::size_t child = 1; child <= 2 && child < m_heap.size(); ++child)
        if (isLater(m_heap.front(), m_heap[child]))
            return false;
    return true;
}

bool EntryStreamState::boundaryIsNext() const
{
    const auto& boundaries = m_index->boundaries();
    return m_nextBoundary < boundaries.size()
           && (m_heap.empty() || boundaries[m_nextBoundary].time <= m_heap.front()->nextTime());
}

/// Opens every set that may hold a record due before, or at the same time as, the top of the heap.
/// False when no record is left.
bool EntryStreamState::openDueSets()
{
    const auto& sets = m_index->chunkSets();
    for (;;) {
        while (m_nextSet < sets.size()
               && (m_heap.empty() || sets[m_nextSet].earliest <= m_heap.front()->nextTime())) {
            const ChunkSetPlace& place = sets[m_nextSet++];
            if (place.latest < m_from)
                continue;
            if (m_filter && !m_filter->goesOn(place.earliest)) {
                end();
                return false;
            }
            openSet(place);
        }
        if (m_heap.empty())
            return false;
        if (!m_heap.front()->isAsleep())
            return true;
        // The file may have changed, so the set goes back into the heap.
        std::pop_heap(m_heap.begin(), m_heap.end(), isLater);
        OpenChunkSet& set = *m_heap.back();
        set.wake(catalog(set.place()), source());
        if (set.atEnd()) {
            m_heap.pop_back();
            continue;
        }
        m_openBytes += set.bytes();
        // Large sets that take turns must not put one another to sleep at every record.
        if (set.timesWoken() > 1)
            m_budget = std::min(m_budget + set.bytes(), largestBudget);
        std::push_heap(m_heap.begin(), m_heap.end(), isLater);
        keepWithinBudget(&set);
    }
}

void EntryStreamState::end()
{
    m_heap.clear();
    m_openBytes = 0;
    m_nextSet = m_index->chunkSets().size();
    m_nextBoundary = m_index->boundaries().size();
}

void EntryStreamState::openSet(const ChunkSetPlace& place)
{
    std::unique_ptr<OpenChunkSet> set;
    if (m_spare.empty()) {
        set = std::make_unique<OpenChunkSet>();
    } else {
        set = std::move(m_spare.back());
        m_spare.pop_back();
    }
    set->open(place, catalog(place), source());
    if (set->atEnd()) {
        keepForReuse(std::move(set));
        return;
    }
    const OpenChunkSet* newest = set.get();
    m_openBytes += set->bytes();
    m_heap.push_back(std::move(set));
    std::push_heap(m_heap.begin(), m_heap.end(), isLater);
    keepWithinBudget(newest);
}

/// Puts the sets to sleep whose next records are due last. A quarter of the budget becomes free, so
/// that this is rare: it looks at all sets.
void EntryStreamState::keepWithinBudget(const OpenChunkSet* newest)
{
    if (m_openBytes <= m_budget)
        return;
    std::vector<OpenChunkSet*> awake;
    for (const auto& set : m_heap)
        if (!set->isAsleep() && set.get() != newest && set != m_heap.front())
            awake.push_back(set.get());
    std::sort(awake.begin(), awake.end(), [](const OpenChunkSet* a, const OpenChunkSet* b) {
        return a->nextTime() > b->nextTime();
    });
    const std::size_t wanted = m_budget / 4 * 3;
    for (auto set = awake.begin(); set != awake.end() && m_openBytes > wanted; ++set) {
        m_openBytes -= (*set)->bytes();
        (*set)->sleep();
    }
}

OpenChunkSet::Source EntryStreamState::source()
{
    m_resolver.oversize().reach(m_record.time);
    return {*m_index, m_resolver.oversize(), m_selection};
}

std::shared_ptr<KnownCatalog> EntryStreamState::catalog(const ChunkSetPlace& place)
{
    if (place.catalog == ChunkSetPlace::noCatalog)
        return nullptr;
    std::weak_ptr<KnownCatalog>& known = m_catalogs[place.catalog];
    std::shared_ptr<KnownCatalog> catalog = known.lock();
    if (!catalog) {
        const CatalogPlace& at = m_index->catalog(place.catalog);
        const File* file = m_index->files().file(at.file);
        catalog = std::make_shared<KnownCatalog>(file ? file->bytesAt(at.offset, at.size)
                                                      : std::vector<std::uint8_t>());
        known = catalog;
    }
    m_latestCatalog = catalog;
    return catalog;
}

} // namespace logstore
