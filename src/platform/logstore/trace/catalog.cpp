// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/catalog.h"

#include "platform/logstore/bytes/bytereader.h"

#include <algorithm>

namespace logstore {

namespace {

constexpr std::size_t headSize = 24;

// offset  size  field
//      0     2  offset of the subsystem strings
//      2     2  offset of the process entries
//      4     2  number of process entries
//      6     2  offset of the sub-chunk entries
//      8     2  number of sub-chunk entries
//     10     2  offset of the personas, which nothing here needs; 0 = none
//     24        image identifiers, 16 bytes each; the offsets above count from here
struct Head
{
    std::uint16_t stringsOffset;
    std::uint16_t processesOffset;
    std::uint16_t processCount;
    std::uint16_t subChunksOffset;
    std::uint16_t subChunkCount;
    Bytes area;

    explicit Head(Bytes body)
        : stringsOffset(loadAt<std::uint16_t>(body, 0))
        , processesOffset(loadAt<std::uint16_t>(body, 2))
        , processCount(loadAt<std::uint16_t>(body, 4))
        , subChunksOffset(loadAt<std::uint16_t>(body, 6))
        , subChunkCount(loadAt<std::uint16_t>(body, 8))
        , area(clipped(body, headSize))
    {
    }

    bool inOrder() const
    {
        return processesInside() && processesOffset <= subChunksOffset
               && subChunksOffset <= area.size();
    }
    /// Enough to read the processes, which outlive a damaged index of the chunk sets.
    bool processesInside() const
    {
        return stringsOffset <= processesOffset && processesOffset <= area.size();
    }
};

/// False for the values that stand for none.
bool isPersona(std::uint32_t identifier)
{
    return identifier != 0 && identifier != 0xffffffff && identifier != 0xaaaaaaaa;
}

} // namespace

Catalog::Catalog(std::vector<std::uint8_t> body) : m_body(std::move(body))
{
    readProcesses();
}

// Each at a multiple of 8:
//      0  2, 2  index, flags
//      4     2  index of the main executable's identifier
//      6     2  index of the shared cache's identifier
//      8  8, 4  process key
//     20     4  process id
//     24     4  effective user id
//     28     4  persona
//     32     4  number of image entries, 16 bytes each, which follow at 40
//           4+4  number of subsystem entries, unknown; the entries, 6 bytes each
void Catalog::readProcesses()
{
    const Head head(m_body);
    if (!head.processesInside())
        return;
    m_identifiers = head.area.subspan(0, head.stringsOffset);
    m_strings = head.area.subspan(head.stringsOffset, head.processesOffset - head.stringsOffset);
    // The cursor runs over the whole area, as alignment counts from its start.
    ByteReader in(head.inOrder() ? head.area.subspan(0, head.subChunksOffset) : head.area);
    in.skip(head.processesOffset);
    m_processes.reserve(std::min<std::size_t>(head.processCount, in.remaining() / 48 + 1));
    for (std::size_t i = 0; i < head.processCount; ++i) {
        CatalogProcess process;
        in.align8();
        in.skip(4);
        process.mainImage = identifier(in.read<std::uint16_t>());
        process.sharedCache = identifier(in.read<std::uint16_t>());
        process.key = ProcessKey::read(in);
        process.processIdentifier = in.read<std::int32_t>();
        process.userIdentifier = in.read<std::uint32_t>();
        process.hasPersona = isPersona(in.read<std::uint32_t>());
        const std::uint64_t imageCount = in.read<std::uint32_t>();
        in.skip(4);
        process.images = in.take(imageCount * CatalogProcess::imageEntrySize);
        const std::uint64_t subsystemCount = in.read<std::uint32_t>();
        in.skip(4);
        process.subsystems = in.take(subsystemCount * CatalogProcess::subsystemEntrySize);
        if (!in.ok())
            break;
        m_processes.push_back(process);
    }
    std::stable_sort(
        m_processes.begin(), m_processes.end(),
        [](const CatalogProcess& a, const CatalogProcess& b) { return a.key < b.key; });
}

// Each at a multiple of 8: u64 earliest, u64 latest, u32 unpacked size, u32 compression (the chunk
// set itself tells that, too), u32 n, n u16 process indexes, u32 n, n u16 offsets of strings.
std::vector<SubChunk> Catalog::readSubChunks(Bytes body)
{
    const Head head(body);
    std::vector<SubChunk> subChunks;
    if (!head.inOrder())
        return subChunks;
    ByteReader in(head.area);
    in.skip(head.subChunksOffset);
    for (std::size_t i = 0; i < head.subChunkCount; ++i) {
        SubChunk subChunk{};
        in.align8();
        subChunk.earliest = in.read<std::uint64_t>();
        subChunk.latest = in.read<std::uint64_t>();
        in.skip(8);
        in.skip(std::uint64_t{in.read<std::uint32_t>()} * 2);
        in.skip(std::uint64_t{in.read<std::uint32_t>()} * 2);
        if (!in.ok())
            break;
        subChunks.push_back(subChunk);
    }
    return subChunks;
}

std::optional<Uuid> Catalog::identifier(std::uint16_t index) const
{
    const std::size_t at = std::size_t{index} * sizeof(Uuid);
    if (at + sizeof(Uuid) > m_identifiers.size())
        return std::nullopt;
    return loadAt<Uuid>(m_identifiers, at);
}

std::string_view Catalog::string(std::uint16_t offset) const
{
    return cString(clipped(m_strings, offset));
}

} // namespace logstore
