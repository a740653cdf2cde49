// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/arithmetic.h"
#include "platform/logstore/trace/record.h"

#include <algorithm>

namespace logstore {

// offset  size  field
//      0 8, 4  process key
//     12     1  time to live, days
//     13     1  1 = the room between public and private data is left out
//     16     2  public size, counted from here
//     18     2  private virtual offset; 0x1000 = no private data
//     22     1  stream: 0 persistent, 1 special, 2 memory, 4 signpost
//     24     8  base continuous time
//     32        records
struct FirehoseChunk
{
    static constexpr std::size_t headSize = 32;

    ProcessKey key;
    std::uint8_t stream = 0;
    std::uint16_t privateOffset = 0;
    std::uint64_t baseTime = 0;
    Bytes records; ///< from the end of the head to the end of the public data
    Bytes privateArea;

    /// `body` must hold at least headSize bytes.
    static FirehoseChunk read(Bytes body)
    {
        constexpr std::size_t publicStart = 16;
        constexpr std::uint16_t noPrivateData = 0x1000;
        FirehoseChunk chunk;
        ByteReader in(body);
        chunk.key = ProcessKey::read(in);
        chunk.stream = body[22];
        chunk.baseTime = loadAt<std::uint64_t>(body, 24);
        const std::size_t publicEnd = publicStart + loadAt<std::uint16_t>(body, 16);
        chunk.records = clipped(body, headSize, publicEnd > headSize ? publicEnd - headSize : 0);
        chunk.privateOffset = loadAt<std::uint16_t>(body, 18);
        if (chunk.privateOffset > 0 && chunk.privateOffset < noPrivateData) {
            const std::size_t size =
                std::min<std::size_t>(noPrivateData - chunk.privateOffset, body.size() - headSize);
            chunk.privateArea = body.last(size);
        }
        return chunk;
    }

    /// The data of the record whose head stands at `offset` of `records`.
    Bytes recordData(std::size_t offset, const RecordHead& head) const
    {
        return clipped(records, offset + RecordHead::size, head.dataSize);
    }

    std::uint64_t continuousTime(const RecordHead& head) const
    {
        return saturatingAdd(baseTime, head.timeDelta);
    }

    /// A record's own part of the private area; nothing when it does not lie inside as a whole, as
    /// what stands there is then some other record's.
    Bytes privateData(const RecordFields& fields) const
    {
        if (fields.privateOffset < privateOffset)
            return {};
        const std::size_t start = fields.privateOffset - privateOffset;
        if (start + fields.privateSize > privateArea.size())
            return {};
        return privateArea.subspan(start, fields.privateSize);
    }

    /// Calls `visit(offset, head)` for each record an entry can be made of.
    template <typename Visit>
    void forEachRecord(Visit visit) const
    {
        std::size_t offset = 0;
        while (records.size() - offset >= RecordHead::size) {
            const RecordHead head = RecordHead::read(records.subspan(offset));
            if (static_cast<std::uint8_t>(head.kind) == 0)
                return;
            if (head.isKnown())
                visit(offset, head);
            const std::size_t step = (RecordHead::size + head.dataSize + 7) / 8 * 8;
            if (step > records.size() - offset)
                return;
            offset += step;
        }
    }
};

} // namespace logstore
