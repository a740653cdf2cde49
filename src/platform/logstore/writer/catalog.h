// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/process.h"
#include "platform/logstore/writer/record.h"

#include <cstdint>
#include <vector>

namespace logstore::writer {

/// What a catalog tells of one of its chunk sets.
struct SubChunk
{
    std::uint64_t earliest = 0;
    std::uint64_t latest = 0;
    std::uint32_t size = 0;                 ///< after decompression
    std::vector<std::uint16_t> processes{}; ///< indexes of processes with records in it
    std::uint32_t compression = Packing{}.number();
};

struct Catalog
{
    std::vector<Process> processes{};
    std::vector<SubChunk> subChunks{};
    std::uint64_t time = 0; ///< near that of the first chunk set
    Edit edit{};            ///< of the body
};

Bytes body(const Catalog& catalog);

} // namespace logstore::writer
