// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/tracefile.h"

#include "platform/logstore/writer/catalog.h"

#include <algorithm>
#include <array>
#include <set>

namespace logstore::writer {

namespace {

std::uint32_t tagOf(const Chunk& chunk)
{
    if (const auto* raw = std::get_if<RawChunk>(&chunk))
        return raw->tag;
    constexpr std::array tags{FirehoseChunk, OversizeChunk, StateDumpChunk, SimpleDumpChunk};
    return tags.at(chunk.index());
}

const Bytes& body(const RawChunk& chunk)
{
    return chunk.body;
}

/// Collects what a catalog tells of a chunk set.
class SubChunkCollector
{
public:
    explicit SubChunkCollector(const std::vector<Process>& processes) : m_processes(processes) {}

    void operator()(const Firehose& firehose)
    {
        for (const Record& record : firehose.records)
            note(firehose.process, record.time);
    }
    void operator()(const RawChunk&) {}
    template <typename T>
    void operator()(const T& chunk)
    {
        note(chunk.process, chunk.time);
    }

    SubChunk result(std::size_t size, const Packing& packing) const
    {
        const bool timesKnown = m_earliest <= m_latest; // those of raw chunks are not
        return SubChunk{timesKnown ? m_earliest : 0,
                        timesKnown ? m_latest : UINT64_MAX,
                        static_cast<std::uint32_t>(size),
                        {m_indexes.begin(), m_indexes.end()},
                        packing.number()};
    }

private:
    void note(const ProcessKey& key, std::uint64_t time)
    {
        m_earliest = std::min(m_earliest, time);
        m_latest = std::max(m_latest, time);
        const auto process = std::find_if(m_processes.begin(), m_processes.end(),
                                          [&](const Process& each) { return each.key == key; });
        if (process != m_processes.end())
            m_indexes.insert(static_cast<std::uint16_t>(process - m_processes.begin()));
    }

    const std::vector<Process>& m_processes;
    std::uint64_t m_earliest = UINT64_MAX;
    std::uint64_t m_latest = 0;
    std::set<std::uint16_t> m_indexes;
};

Bytes contentOf(const ChunkSet& set)
{
    ByteBuilder content;
    for (const Chunk& chunk : set.chunks) {
        const Bytes bytes = std::visit([](const auto& each) { return Bytes(body(each)); }, chunk);
        appendUnpaddedChunk(content, tagOf(chunk), bytes);
        if (set.padded)
            content.align();
    }
    Bytes bytes = content.take();
    if (set.editContent)
        set.editContent(bytes);
    return bytes;
}

void appendSection(ByteBuilder& out, const Section& section)
{
    ByteBuilder sets;
    Catalog catalog{section.processes, {}, 0, section.editCatalog};
    for (const ChunkSet& set : section.sets) {
        const Bytes content = contentOf(set);
        SubChunkCollector collector(section.processes);
        for (const Chunk& chunk : set.chunks)
            std::visit(collector, chunk);
        catalog.subChunks.push_back(collector.result(content.size(), set.packing));
        Bytes packed = chunkSetBody(content, set.packing);
        if (set.edit)
            set.edit(packed);
        appendChunk(sets, ChunkSetChunk, packed);
    }
    if (!catalog.subChunks.empty())
        catalog.time = catalog.subChunks.front().earliest;
    if (section.header)
        appendChunk(out, HeaderChunk, body(*section.header));
    appendChunk(out, CatalogChunk, body(catalog));
    out.bytes(sets.view());
}

} // namespace

Bytes fileBytes(const TraceFile& file)
{
    ByteBuilder out;
    appendChunk(out, HeaderChunk, body(file.header));
    for (const Section& section : file.sections)
        appendSection(out, section);
    return out.take();
}

} // namespace logstore::writer
