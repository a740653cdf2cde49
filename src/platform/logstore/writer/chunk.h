// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"

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

/// Appends a head, the body and the zero bytes up to a multiple of 8.
void appendChunk(ByteBuilder& out, std::uint32_t tag, ByteView body);

/// The body of a chunk set: one LZ4 block, or the content as it is when that is not longer, and the
/// end marker.
Bytes chunkSetBody(ByteView content);

} // namespace logstore::writer
