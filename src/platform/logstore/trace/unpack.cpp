// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/unpack.h"

#include "platform/logstore/trace/lzbitmap.h"

#include <algorithm>
#include <lz4.h>

namespace logstore {

namespace {

constexpr std::uint32_t compressedMarker = 0x31347662; // "bv41"
constexpr std::uint32_t storedMarker = 0x2d347662;     // "bv4-"
constexpr std::uint32_t endMarker = 0x24347662;        // "bv4$"
constexpr std::uint32_t anyBlock = 0x347662;           // "bv4", what all of them begin with
constexpr std::uint32_t threeBytes = 0xffffff;
constexpr std::size_t dictionarySize = std::size_t{64} << 10;
/// LZ4 cannot shrink by more than this: a larger announced size is a lie.
constexpr std::uint64_t largestRatio = 255;

bool unpackCompressed(Bytes block, std::uint32_t size, std::vector<std::uint8_t>& out)
{
    const std::size_t before = out.size();
    const std::size_t dictionary = std::min(before, dictionarySize);
    out.resize(before + size);
    const int written = LZ4_decompress_safe_usingDict(
        reinterpret_cast<const char*>(block.data()), reinterpret_cast<char*>(out.data() + before),
        static_cast<int>(block.size()), static_cast<int>(size),
        reinterpret_cast<const char*>(out.data() + before - dictionary),
        static_cast<int>(dictionary));
    out.resize(before + static_cast<std::size_t>(std::max(written, 0)));
    return written >= 0;
}

// Each block: four characters; "bv41", u32 size unpacked, u32 size packed, one raw LZ4 block;
// "bv4-", u32 size, the bytes as they are; "bv4$", the end.
bool unpackBlocks(Bytes body, std::vector<std::uint8_t>& out)
{
    ByteReader in(body);
    for (;;) {
        const auto marker = in.read<std::uint32_t>();
        if (marker == endMarker)
            return true;
        const auto size = in.read<std::uint32_t>();
        if (!in.ok() || (marker != compressedMarker && marker != storedMarker)
            || size > largestUnpacked - out.size())
            return false;
        if (marker == storedMarker) {
            const Bytes block = in.take(size);
            out.insert(out.end(), block.begin(), block.end());
            continue;
        }
        const Bytes block = in.take(in.read<std::uint32_t>());
        if (!in.ok() || size > (block.size() + 1) * largestRatio
            || !unpackCompressed(block, size, out))
            return false;
    }
}

} // namespace

Unpacked unpackChunkSet(Bytes body, std::vector<std::uint8_t>& out)
{
    out.clear();
    bool whole = false;
    if ((loadAt<std::uint32_t>(body) & threeBytes) == anyBlock)
        whole = unpackBlocks(body, out);
    else if (isLzbitmap(body))
        whole = unpackLzbitmap(body, largestUnpacked, out);
    else
        return Unpacked::UnknownCompression;
    return whole ? Unpacked::Whole : Unpacked::Damaged;
}

} // namespace logstore
