// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/chunk.h"

namespace logstore {

// offset  size  field
//      0 8, 4  process key
//     16     8  continuous time, that of the record it belongs to
//     24     4  reference
//     28  2, 2  public size, private size
//     32        public data: items and their values; then private data
struct OversizeChunk
{
    static constexpr std::size_t headSize = 32;

    Bytes publicData;
    Bytes privateData;

    /// `body` must hold at least headSize bytes.
    static OversizeChunk read(Bytes body)
    {
        const auto publicSize = loadAt<std::uint16_t>(body, 28);
        return {clipped(body, headSize, publicSize),
                clipped(body, headSize + publicSize, loadAt<std::uint16_t>(body, 30))};
    }

    static std::uint32_t reference(Bytes body) { return loadAt<std::uint32_t>(body, 24); }

    /// The body without what may follow its data.
    static Bytes usedPart(Bytes body)
    {
        return clipped(body, 0,
                       headSize + std::uint64_t{loadAt<std::uint16_t>(body, 28)}
                           + loadAt<std::uint16_t>(body, 30));
    }
};

} // namespace logstore
