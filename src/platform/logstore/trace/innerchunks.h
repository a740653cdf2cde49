// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/chunk.h"

namespace logstore {

/// A chunk with a smaller body than this is ignored.
inline std::size_t minimalBody(ChunkTag tag)
{
    switch (tag) {
    case ChunkTag::Firehose:
    case ChunkTag::Oversize: return 32;
    case ChunkTag::StateDump: return 248;
    case ChunkTag::SimpleDump: return 84;
    default: return 0;
    }
}

/// Calls `visit(tag, body)` for each chunk of known kind in an unpacked chunk set.
template <typename Visit>
void forEachInnerChunk(Bytes unpacked, Visit visit)
{
    std::size_t at = 0;
    std::size_t exactEnd = 0;
    const auto headAt = [unpacked](std::size_t offset) {
        const Bytes rest = clipped(unpacked, offset);
        return rest.size() < ChunkHead::size ? ChunkHead{ChunkTag{}, 0} : ChunkHead::read(rest);
    };
    for (;;) {
        ChunkHead head = headAt(at);
        // Rarely a chunk follows the one before it without padding.
        if (!head.isInner() && exactEnd != at && headAt(exactEnd).isInner()) {
            at = exactEnd;
            head = headAt(at);
        }
        if (unpacked.size() - at < ChunkHead::size
            || (head.tag == ChunkTag{} && head.bodySize == 0))
            return;
        const Bytes body = clipped(unpacked, at + ChunkHead::size, head.bodySize);
        if (head.isInner() && body.size() >= minimalBody(head.tag))
            visit(head.tag, body);
        if (body.size() < head.bodySize)
            return;
        exactEnd = at + ChunkHead::size + body.size();
        at = (exactEnd + 7) / 8 * 8;
        if (at > unpacked.size()) {
            if (exactEnd >= unpacked.size())
                return;
            at = unpacked.size();
        }
    }
}

/// The continuous time of a chunk other than a firehose chunk.
inline std::uint64_t dumpTime(Bytes body)
{
    return loadAt<std::uint64_t>(body, 16);
}

} // namespace logstore
