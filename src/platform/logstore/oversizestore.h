// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/storeindex.h"
#include "platform/logstore/trace/chunk.h"

#include <map>

namespace logstore {

/// What an oversize chunk and the record that it belongs to have in common.
struct OversizeKey
{
    Uuid boot;
    ProcessKey process;
    std::uint32_t reference;
    std::uint32_t file;
    std::uint64_t time; ///< continuous

    bool operator<(const OversizeKey& other) const;
    bool isOfReference(const OversizeKey& other) const;
};

/// The oversize chunks of the chunk sets opened so far. A chunk's record may come out days after
/// its set is opened. When the chunks take too much memory, those whose time has passed are
/// dropped, and of those due last only the place is kept.
class OversizeStore
{
public:
    explicit OversizeStore(StoreIndex& index) : m_index(index) {}

    /// No record before this wall time is going to be asked for.
    void reach(std::int64_t wallTime) { m_reached = wallTime; }

    /// Takes the chunk whose body begins at `offset` of an unpacked chunk set.
    void add(const ChunkSetPlace& place, std::size_t offset, Bytes body);

    /// The body of a record's chunk: the one of its time, in its own file or another of its boot;
    /// failing that, one of its file that has its reference: the nearest before it, else the
    /// nearest after. Empty when there is none. Valid until the next call.
    Bytes find(const OversizeKey& wanted);

private:
    struct Kept;
    using Chunks = std::map<OversizeKey, Kept>;
    using Order = std::multimap<std::int64_t, Chunks::iterator>; ///< by wall time
    struct Kept
    {
        const ChunkSetPlace* place = nullptr;
        std::size_t offset = 0;
        std::size_t size = 0;
        std::vector<std::uint8_t> body; ///< empty: only its place is kept
        Order::iterator order;
    };

    Chunks::iterator lookUp(const OversizeKey& wanted);
    Bytes unpackAgain(const Kept& chunk);
    void keepWithinBudget();
    void drop(Order::iterator chunk);
    void forget(Order& order, Order::iterator chunk);

    StoreIndex& m_index;
    std::int64_t m_reached = INT64_MIN;
    Chunks m_chunks;
    Order m_whole;
    Order m_places;          ///< of those without body
    std::size_t m_bytes = 0; ///< of those with body
    std::vector<std::uint8_t> m_again;
};

} // namespace logstore
