// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/firehose.h"
#include "platform/logstore/writer/header.h"
#include "platform/logstore/writer/oversize.h"
#include "platform/logstore/writer/process.h"
#include "platform/logstore/writer/simpledump.h"
#include "platform/logstore/writer/statedump.h"

#include <optional>
#include <variant>
#include <vector>

namespace logstore::writer {

/// A chunk given as bytes.
struct RawChunk
{
    std::uint32_t tag = 0;
    Bytes body{};
};

using Chunk = std::variant<Firehose, Oversize, StateDump, SimpleDump, RawChunk>;

/// What is packed together.
struct ChunkSet
{
    std::vector<Chunk> chunks{};
    Packing packing{};
    bool padded = true; ///< zero bytes after each chunk up to a multiple of 8
    Edit editContent{}; ///< before it is packed
    Edit edit{};        ///< of the packed body
};

/// A catalog and its chunk sets. The catalog's index of the sets is made from them.
struct Section
{
    std::optional<Header> header{}; ///< a further header in front of the catalog
    std::vector<Process> processes{};
    std::vector<ChunkSet> sets{};
    Edit editCatalog{};
};

struct TraceFile
{
    Header header{};
    std::vector<Section> sections{};
};

Bytes fileBytes(const TraceFile& file);

} // namespace logstore::writer
