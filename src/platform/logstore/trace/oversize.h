// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/chunk.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace logstore {

// offset  size  field
//      0 8, 4  process key
//     16     8  continuous time, that of the record it belongs to
//     24     4  reference
//     28  2, 2  public size, private size
//     32        public data: items and their values; then private data
struct OversizeChunk
{
    static constexpr std::size_t headSize = 32;

    Bytes publicData;
    Bytes privateData;

    /// `body` must hold at least headSize bytes.
    static OversizeChunk read(Bytes body)
    {
        const auto publicSize = loadAt<std::uint16_t>(body, 28);
        return {clipped(body, headSize, publicSize),
                clipped(body, headSize + publicSize, loadAt<std::uint16_t>(body, 30))};
    }
};

/// The oversize chunks met so far. They stand before their records, but in real files up to two
/// chunk sets before, so their bytes are kept beyond their chunk set. The oldest go when they take
/// too much room.
class OversizeStore
{
public:
    void add(std::uint32_t clock, Bytes body);

    /// The arguments of a record: the chunk with its reference and its time; failing that, the last
    /// one with its reference. Null when there is none.
    const std::vector<std::uint8_t>* find(std::uint32_t clock,
                                          const ProcessKey& key,
                                          std::uint32_t reference,
                                          std::uint64_t time) const;

private:
    struct Key
    {
        std::uint32_t clock;
        ProcessKey process;
        std::uint32_t reference;

        bool operator==(const Key& other) const
        {
            return clock == other.clock && process == other.process && reference == other.reference;
        }
    };
    struct KeyHash
    {
        std::size_t operator()(const Key& key) const;
    };
    struct Kept
    {
        std::uint64_t time;
        std::vector<std::uint8_t> body;
    };

    std::unordered_map<Key, std::vector<Kept>, KeyHash> m_chunks;
    std::deque<Key> m_order; ///< oldest first
    std::size_t m_bytes = 0;
};

} // namespace logstore
