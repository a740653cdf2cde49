// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/catalog.h"

#include "platform/logstore/bytes/bytereader.h"

#include <algorithm>
#include <numeric>

namespace logstore {

namespace {

constexpr std::size_t headSize = 24;
constexpr std::size_t imageEntrySize = 16;

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

/// u16 identifier, u16 offset of the subsystem, u16 offset of the category; absent when the process
/// has none of that identifier.
std::optional<Bytes> subsystemEntry(CatalogProcess& process, std::uint16_t identifier)
{
    const auto entryAt = [&process](std::size_t number) {
        return process.subsystems.subspan(number * CatalogProcess::subsystemEntrySize,
                                          CatalogProcess::subsystemEntrySize);
    };
    const auto identifierAt = [&entryAt](std::size_t number) {
        return loadAt<std::uint16_t>(entryAt(number));
    };
    const std::size_t count = process.subsystems.size() / CatalogProcess::subsystemEntrySize;
    // Identifiers count up from 1, as a rule without gaps: look there first.
    const std::size_t expected = identifier == 0 ? 0 : std::size_t{identifier} - 1;
    if (expected < count && identifierAt(expected) == identifier)
        return entryAt(expected);
    std::vector<std::uint32_t>& order = process.subsystemsByIdentifier;
    if (order.empty()) {
        order.resize(count);
        std::iota(order.begin(), order.end(), 0U);
        std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            return identifierAt(a) < identifierAt(b);
        });
    }
    const auto found = std::lower_bound(
        order.begin(), order.end(), identifier,
        [&](std::uint32_t number, std::uint16_t value) { return identifierAt(number) < value; });
    if (found == order.end() || identifierAt(*found) != identifier)
        return std::nullopt;
    return entryAt(*found);
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
        process.images = in.take(imageCount * imageEntrySize);
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

CatalogProcess* Catalog::find(const ProcessKey& key)
{
    const auto found = std::lower_bound(
        m_processes.begin(), m_processes.end(), key,
        [](const CatalogProcess& process, const ProcessKey& value) { return process.key < value; });
    return found != m_processes.end() && found->key == key ? &*found : nullptr;
}

KnownSubsystem& Catalog::subsystem(CatalogProcess& process,
                                   std::optional<std::uint16_t> identifier,
                                   TextPool& pool) const
{
    if (!identifier)
        return process.noSubsystem;
    KnownSubsystem& known = process.knownSubsystems[*identifier];
    if (!known.isResolved) {
        known.texts = readSubsystem(process, *identifier, pool);
        known.isResolved = true;
    }
    return known;
}

Subsystem
Catalog::readSubsystem(CatalogProcess& process, std::uint16_t identifier, TextPool& pool) const
{
    const auto entry = subsystemEntry(process, identifier);
    if (!entry)
        return {};
    return {pooledText(loadAt<std::uint16_t>(*entry, 2), pool),
            pooledText(loadAt<std::uint16_t>(*entry, 4), pool)};
}

// u32 size, u32 unknown, u16 identifier, u32 + u16 load address
std::optional<Uuid>
Catalog::imageAt(CatalogProcess& process, std::uint64_t address, std::uint64_t& load) const
{
    std::vector<LoadedImage>& images = process.imagesByLoad;
    const auto isLower = [](const LoadedImage& a, const LoadedImage& b) { return a.load < b.load; };
    if (images.empty()) {
        ByteReader in(process.images);
        while (in.remaining() >= imageEntrySize) {
            const Bytes entry = in.take(imageEntrySize);
            images.push_back({loadAt<std::uint32_t>(entry, 10)
                                  | std::uint64_t{loadAt<std::uint16_t>(entry, 14)} << 32,
                              loadAt<std::uint32_t>(entry, 0), loadAt<std::uint16_t>(entry, 8)});
        }
        std::stable_sort(images.begin(), images.end(), isLower);
    }
    const auto after =
        std::upper_bound(images.begin(), images.end(), LoadedImage{address, 0, 0}, isLower);
    if (after == images.begin() || address - std::prev(after)->load >= std::prev(after)->size)
        return std::nullopt;
    load = std::prev(after)->load;
    return identifier(std::prev(after)->identifier);
}

std::optional<Uuid> Catalog::identifier(std::uint16_t index) const
{
    const std::size_t at = std::size_t{index} * sizeof(Uuid);
    if (at + sizeof(Uuid) > m_identifiers.size())
        return std::nullopt;
    return loadAt<Uuid>(m_identifiers, at);
}

std::string_view Catalog::pooledText(std::uint16_t offset, TextPool& pool) const
{
    return pool.internUnchecked(cString(clipped(m_strings, offset)));
}

} // namespace logstore
