// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/chunk.h"

#include <algorithm>
#include <lz4.h>

namespace logstore::writer {

namespace {

/// The compressed block, empty when it would be no shorter than the content.
Bytes compressedBlock(LZ4_stream_t& stream, ByteView content)
{
    const auto size = static_cast<int>(content.size());
    Bytes block(static_cast<std::size_t>(LZ4_compressBound(size)));
    const int compressed = LZ4_compress_fast_continue(
        &stream, reinterpret_cast<const char*>(content.data()),
        reinterpret_cast<char*>(block.data()), size, static_cast<int>(block.size()), 1);
    block.resize(compressed > 0 && compressed < size ? static_cast<std::size_t>(compressed) : 0);
    return block;
}

} // namespace

void appendUnpaddedChunk(ByteBuilder& out, std::uint32_t tag, ByteView body)
{
    const bool outer = tag == HeaderChunk || tag == CatalogChunk || tag == ChunkSetChunk;
    out.u32(tag).u32(outer ? 0x11 : 0).u64(body.size()).bytes(body);
}

void appendChunk(ByteBuilder& out, std::uint32_t tag, ByteView body)
{
    appendUnpaddedChunk(out, tag, body);
    out.align();
}

std::uint32_t Packing::number() const
{
    constexpr std::uint32_t lz4 = 0x100;
    constexpr std::uint32_t lzbitmap16 = 0x700;
    constexpr std::uint32_t lzbitmap32 = 0x701;
    if (compression != Compression::Lzbitmap)
        return lz4;
    return lzbitmap.largeChunks ? lzbitmap32 : lzbitmap16;
}

Bytes chunkSetBody(ByteView content, Packing packing)
{
    if (packing.compression == Compression::Lzbitmap)
        return lzbitmapStream(content, packing.lzbitmap);
    LZ4_stream_t stream;
    LZ4_initStream(&stream, sizeof stream);
    ByteBuilder body;
    const std::size_t blockSize = packing.blockSize == 0 ? content.size() : packing.blockSize;
    for (std::size_t at = 0; at < content.size(); at += blockSize) {
        const auto piece = content.subspan(at, std::min(blockSize, content.size() - at));
        const Bytes block =
            packing.compression == Compression::Lz4 ? compressedBlock(stream, piece) : Bytes{};
        const auto size = static_cast<std::uint32_t>(piece.size());
        if (block.empty())
            body.text("bv4-").u32(size).bytes(piece);
        else
            body.text("bv41").u32(size).u32(static_cast<std::uint32_t>(block.size())).bytes(block);
    }
    return body.text("bv4$").take();
}

} // namespace logstore::writer
