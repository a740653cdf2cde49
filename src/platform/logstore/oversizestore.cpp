// SPDX-License-Identifier: MIT
#include "platform/logstore/oversizestore.h"

#include "platform/logstore/trace/innerchunks.h"
#include "platform/logstore/trace/oversize.h"

#include <algorithm>
#include <tuple>

namespace logstore {

namespace {

constexpr std::size_t budget = std::size_t{8} << 20;
constexpr std::size_t chunkCost = 256; ///< of a chunk beside its body
constexpr std::size_t mostPlaces = std::size_t{16} << 20 >> 8;

OversizeKey keyOf(const BootClock& clock, std::uint32_t file, Bytes body)
{
    ByteReader in(body);
    const ProcessKey process = ProcessKey::read(in);
    return {clock.boot(), process, OversizeChunk::reference(body), file, dumpTime(body)};
}

} // namespace

bool OversizeKey::operator<(const OversizeKey& other) const
{
    return std::tie(boot, process, reference, file, time)
           < std::tie(other.boot, other.process, other.reference, other.file, other.time);
}

bool OversizeKey::isOfReference(const OversizeKey& other) const
{
    return reference == other.reference && process == other.process && boot == other.boot;
}

void OversizeStore::add(const ChunkSetPlace& place, std::size_t offset, Bytes body)
{
    const BootClock& clock = m_index.clock(place.clock);
    const OversizeKey key = keyOf(clock, place.file, body);
    const auto [chunk, isNew] = m_chunks.try_emplace(key);
    Kept& kept = chunk->second;
    if (!isNew && !kept.body.empty())
        return; // its chunk set has been unpacked a second time
    const Bytes used = OversizeChunk::usedPart(body);
    if (isNew) {
        kept.place = &place;
        kept.offset = offset;
        kept.size = used.size();
        kept.order = m_whole.emplace(clock.wallTime(key.time), chunk);
    } else {
        kept.order = m_whole.insert(m_places.extract(kept.order));
    }
    kept.body.assign(used.begin(), used.end());
    m_bytes += used.size() + chunkCost;
    keepWithinBudget();
}

void OversizeStore::keepWithinBudget()
{
    while (m_bytes > budget) {
        if (m_whole.begin()->first < m_reached)
            forget(m_whole, m_whole.begin());
        else
            drop(std::prev(m_whole.end()));
    }
    while (m_places.size() > mostPlaces) {
        const bool hasPassed = m_places.begin()->first < m_reached;
        forget(m_places, hasPassed ? m_places.begin() : std::prev(m_places.end()));
    }
}

void OversizeStore::drop(Order::iterator chunk)
{
    Kept& kept = chunk->second->second;
    m_bytes -= kept.body.size() + chunkCost;
    kept.body = std::vector<std::uint8_t>(); // {} would keep the memory
    kept.order = m_places.insert(m_whole.extract(chunk));
}

void OversizeStore::forget(Order& order, Order::iterator chunk)
{
    const auto kept = chunk->second;
    if (!kept->second.body.empty())
        m_bytes -= kept->second.body.size() + chunkCost;
    order.erase(chunk);
    m_chunks.erase(kept);
}

Bytes OversizeStore::find(const OversizeKey& wanted)
{
    const auto found = lookUp(wanted);
    if (found == m_chunks.end())
        return {};
    const Kept& chunk = found->second;
    return chunk.body.empty() ? unpackAgain(chunk) : Bytes(chunk.body);
}

OversizeStore::Chunks::iterator OversizeStore::lookUp(const OversizeKey& wanted)
{
    const auto exact = m_chunks.find(wanted);
    if (exact != m_chunks.end())
        return exact;
    OversizeKey key = wanted;
    key.file = 0;
    key.time = 0;
    for (auto at = m_chunks.lower_bound(key);
         at != m_chunks.end() && at->first.isOfReference(wanted); at = m_chunks.upper_bound(key)) {
        key.file = at->first.file;
        key.time = wanted.time;
        if (const auto inFile = m_chunks.find(key); inFile != m_chunks.end())
            return inFile;
        key.time = UINT64_MAX;
    }
    const auto fits = [&](Chunks::iterator chunk) {
        return chunk != m_chunks.end() && chunk->first.isOfReference(wanted)
               && chunk->first.file == wanted.file;
    };
    const auto after = m_chunks.upper_bound(wanted);
    if (after != m_chunks.begin() && fits(std::prev(after)))
        return std::prev(after);
    return fits(after) ? after : m_chunks.end();
}

/// Takes back the other bodies of the chunk set as well: their records are likely to come next.
Bytes OversizeStore::unpackAgain(const Kept& chunk)
{
    const ChunkSetPlace& place = *chunk.place;
    const std::size_t offset = chunk.offset;
    const std::size_t size = chunk.size;
    std::vector<std::uint8_t> unpacked;
    m_index.unpack(place, unpacked);
    const Bytes body = clipped(unpacked, offset, size);
    m_again.assign(body.begin(), body.end());
    forEachInnerChunk(unpacked, [&](ChunkTag tag, Bytes each) {
        if (tag == ChunkTag::Oversize
            && m_chunks.contains(keyOf(m_index.clock(place.clock), place.file, each)))
            add(place, static_cast<std::size_t>(each.data() - unpacked.data()), each);
    });
    return m_again.size() < OversizeChunk::headSize ? Bytes() : Bytes(m_again);
}

} // namespace logstore
