// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/blocks.h"

#include <algorithm>
#include <lz4.h>

namespace logstore {

namespace {

constexpr std::uint32_t compressedMarker = 0x31347662; // "bv41"
constexpr std::uint32_t storedMarker = 0x2d347662;     // "bv4-"
constexpr std::size_t largestOutput = std::size_t{64} << 20;
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

} // namespace

// Each block: four characters; "bv41", u32 size unpacked, u32 size packed, one raw LZ4 block;
// "bv4-", u32 size, the bytes as they are; "bv4$", the end.
void unpackBlocks(Bytes body, std::vector<std::uint8_t>& out)
{
    out.clear();
    ByteReader in(body);
    for (;;) {
        const auto marker = in.read<std::uint32_t>();
        const auto size = in.read<std::uint32_t>();
        if (!in.ok() || (marker != compressedMarker && marker != storedMarker)
            || size > largestOutput - out.size())
            return;
        if (marker == storedMarker) {
            const Bytes block = in.take(size);
            out.insert(out.end(), block.begin(), block.end());
            continue;
        }
        const Bytes block = in.take(in.read<std::uint32_t>());
        if (!in.ok() || size > (block.size() + 1) * largestRatio
            || !unpackCompressed(block, size, out))
            return;
    }
}

} // namespace logstore
