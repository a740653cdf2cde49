// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/chunk.h"

#include <lz4.h>

namespace logstore::writer {

void appendChunk(ByteBuilder& out, std::uint32_t tag, ByteView body)
{
    const bool outer = tag == HeaderChunk || tag == CatalogChunk || tag == ChunkSetChunk;
    out.u32(tag).u32(outer ? 0x11 : 0).u64(body.size()).bytes(body).align();
}

Bytes chunkSetBody(ByteView content)
{
    const auto size = static_cast<int>(content.size());
    Bytes block(static_cast<std::size_t>(LZ4_compressBound(size)));
    const int compressed = LZ4_compress_default(reinterpret_cast<const char*>(content.data()),
                                                reinterpret_cast<char*>(block.data()), size,
                                                static_cast<int>(block.size()));
    ByteBuilder body;
    if (compressed > 0 && compressed < size) {
        block.resize(static_cast<std::size_t>(compressed));
        body.text("bv41")
            .u32(static_cast<std::uint32_t>(size))
            .u32(static_cast<std::uint32_t>(compressed));
        body.bytes(block);
    } else {
        body.text("bv4-").u32(static_cast<std::uint32_t>(size)).bytes(content);
    }
    return body.text("bv4$").take();
}

} // namespace logstore::writer
