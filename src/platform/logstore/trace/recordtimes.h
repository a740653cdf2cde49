// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/firehose.h"
#include "platform/logstore/trace/innerchunks.h"

namespace logstore {

/// Calls `visit(tag, time)` with the continuous time of each record of a firehose chunk, and of
/// each other chunk, in an unpacked chunk set.
template <typename Visit>
void forEachTime(Bytes unpacked, Visit visit)
{
    forEachInnerChunk(unpacked, [&visit](ChunkTag tag, Bytes body) {
        if (tag != ChunkTag::Firehose) {
            visit(tag, dumpTime(body));
            return;
        }
        const FirehoseChunk chunk = FirehoseChunk::read(body);
        chunk.forEachRecord(
            [&](std::size_t, const RecordHead& head) { visit(tag, chunk.continuousTime(head)); });
    });
}

} // namespace logstore
