// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

namespace logstore {

enum class ChunkTag : std::uint32_t {
    Header = 0x1000,
    Catalog = 0x600b,
    ChunkSet = 0x600d,
    Firehose = 0x6001,
    Oversize = 0x6002,
    StateDump = 0x6003,
    SimpleDump = 0x6004
};

// offset  size  field
//      0     4  tag
//      4     4  sub-tag, 0x11 for outer chunks
//      8     8  size of the body, padding not counted
struct ChunkHead
{
    static constexpr std::size_t size = 16;

    ChunkTag tag;
    std::uint64_t bodySize;
    std::uint32_t subTag = 0;

    /// `bytes` must hold at least `size` bytes.
    static ChunkHead read(Bytes bytes)
    {
        return {static_cast<ChunkTag>(loadAt<std::uint32_t>(bytes)),
                loadAt<std::uint64_t>(bytes, 8), loadAt<std::uint32_t>(bytes, 4)};
    }

    /// The number of zero bytes after a body of that size.
    static std::uint64_t padding(std::uint64_t bodySize) { return (8 - bodySize % 8) % 8; }

    bool isInner() const { return tag >= ChunkTag::Firehose && tag <= ChunkTag::SimpleDump; }
};

/// The process that wrote a chunk. Both parts count.
struct ProcessKey
{
    std::uint64_t first = 0;
    std::uint32_t second = 0;

    bool operator==(const ProcessKey& other) const
    {
        return first == other.first && second == other.second;
    }
    bool operator<(const ProcessKey& other) const
    {
        return first != other.first ? first < other.first : second < other.second;
    }

    static ProcessKey read(ByteReader& in)
    {
        const auto firstPart = in.read<std::uint64_t>();
        return {firstPart, in.read<std::uint32_t>()};
    }
};

} // namespace logstore
