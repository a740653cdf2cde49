// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"
#include "platform/logstore/writer/lzbitmap.h"

#include <cstdint>

namespace logstore::writer {

enum ChunkTag : std::uint32_t {
    HeaderChunk = 0x1000,
    CatalogChunk = 0x600b,
    ChunkSetChunk = 0x600d,
    FirehoseChunk = 0x6001,
    OversizeChunk = 0x6002,
    StateDumpChunk = 0x6003,
    SimpleDumpChunk = 0x6004
};

/// Names a process from its records; both parts count.
struct ProcessKey
{
    std::uint64_t first = 0;
    std::uint32_t second = 0;

    bool operator==(const ProcessKey& other) const
    {
        return first == other.first && second == other.second;
    }
};

/// Appends a head and the body.
void appendUnpaddedChunk(ByteBuilder& out, std::uint32_t tag, ByteView body);

/// Appends a head, the body and the zero bytes up to a multiple of 8.
void appendChunk(ByteBuilder& out, std::uint32_t tag, ByteView body);

enum class Compression : std::uint8_t { Stored, Lz4, Lzbitmap };

/// How the content of a chunk set is packed.
struct Packing
{
    Compression compression = Compression::Lz4;
    std::size_t blockSize = 0; ///< 0 = one block; later blocks refer back to earlier ones
    LzbitmapFormat lzbitmap{}; ///< where that is the compression, in place of blocks

    /// What catalogs call it.
    std::uint32_t number() const;
};

/// The body of a chunk set. What compression does not shorten is stored as it is.
Bytes chunkSetBody(ByteView content, Packing packing = {});

} // namespace logstore::writer
