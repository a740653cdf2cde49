// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/catalog.h"

#include <map>
#include <set>

namespace logstore::writer {

namespace {

constexpr std::size_t tablesStart = 24; ///< the catalog's offsets and alignment count from here
constexpr std::uint16_t none = 0xffff;

/// The identifiers that processes and images refer to by index.
class Identifiers
{
public:
    std::uint16_t index(const Uuid& uuid)
    {
        const auto [place, isNew] =
            m_indexes.try_emplace(uuid.bytes, static_cast<std::uint16_t>(m_indexes.size()));
        if (isNew)
            m_area.uuid(uuid);
        return place->second;
    }
    const Bytes& area() const { return m_area.view(); }

private:
    std::map<std::array<std::uint8_t, 16>, std::uint16_t> m_indexes;
    ByteBuilder m_area;
};

/// The texts that subsystems refer to by offset.
class Texts
{
public:
    std::uint16_t offset(const std::string& text)
    {
        const auto [place, isNew] =
            m_offsets.try_emplace(text, static_cast<std::uint16_t>(m_area.size()));
        if (isNew)
            m_area.cstr(text);
        return place->second;
    }
    const Bytes& area() const { return m_area.view(); }

private:
    std::map<std::string, std::uint16_t> m_offsets;
    ByteBuilder m_area;
};

void appendProcess(ByteBuilder& out,
                   const Process& process,
                   std::uint16_t index,
                   Identifiers& identifiers,
                   Texts& texts)
{
    out.u16(index).u16(0).u16(identifiers.index(process.mainImage));
    out.u16(process.sharedCache ? identifiers.index(*process.sharedCache) : none);
    out.u64(process.key.first)
        .u32(process.key.second)
        .i32(process.pid)
        .u32(process.user)
        .u32(process.persona);
    out.u32(static_cast<std::uint32_t>(process.images.size())).u32(0);
    for (const ImageEntry& image : process.images) {
        out.u32(image.size).u32(0).u16(identifiers.index(image.image));
        out.u32(static_cast<std::uint32_t>(image.load))
            .u16(static_cast<std::uint16_t>(image.load >> 32));
    }
    out.u32(static_cast<std::uint32_t>(process.subsystems.size())).u32(0);
    for (const Subsystem& each : process.subsystems)
        out.u16(each.identifier).u16(texts.offset(each.subsystem)).u16(texts.offset(each.category));
    out.align();
}

std::set<std::uint32_t> personasOf(const std::vector<Process>& processes)
{
    std::set<std::uint32_t> personas;
    for (const Process& process : processes)
        if (process.hasPersona())
            personas.insert(process.persona);
    return personas;
}

/// Identifier, type and offset of the text of each; then the texts, in UUID form.
Bytes personaSection(const std::set<std::uint32_t>& personas)
{
    constexpr std::uint32_t textSize = 37;
    ByteBuilder out;
    std::uint32_t textAt = 0;
    for (const std::uint32_t persona : personas) {
        out.u32(persona).u32(1).u32(textAt);
        textAt += textSize;
    }
    out.align();
    for (const std::uint32_t persona : personas) {
        Uuid uuid;
        std::memcpy(uuid.bytes.data(), &persona, sizeof persona);
        out.cstr(uuid.text());
    }
    return out.align().take();
}

/// All texts of the processes that have records in the chunk set.
std::vector<std::uint16_t>
textOffsets(const SubChunk& subChunk, const Catalog& catalog, Texts& texts)
{
    std::vector<std::uint16_t> offsets;
    for (const std::uint16_t index : subChunk.processes)
        for (const Subsystem& each : catalog.processes.at(index).subsystems)
            for (const std::string& text : {each.subsystem, each.category})
                offsets.push_back(texts.offset(text));
    return offsets;
}

void appendSubChunk(ByteBuilder& out,
                    const SubChunk& subChunk,
                    const std::vector<std::uint16_t>& offsets)
{
    out.u64(subChunk.earliest).u64(subChunk.latest).u32(subChunk.size).u32(subChunk.compression);
    out.u32(static_cast<std::uint32_t>(subChunk.processes.size()));
    for (const std::uint16_t index : subChunk.processes)
        out.u16(index);
    out.u32(static_cast<std::uint32_t>(offsets.size()));
    for (const std::uint16_t offset : offsets)
        out.u16(offset);
    out.align();
}

} // namespace

Bytes body(const Catalog& catalog)
{
    Identifiers identifiers;
    Texts texts;
    ByteBuilder processes;
    ByteBuilder subChunks;
    for (std::size_t i = 0; i < catalog.processes.size(); ++i)
        appendProcess(processes, catalog.processes[i], static_cast<std::uint16_t>(i), identifiers,
                      texts);
    for (const SubChunk& each : catalog.subChunks)
        appendSubChunk(subChunks, each, textOffsets(each, catalog, texts));

    ByteBuilder out;
    out.zeros(16).u64(catalog.time).bytes(identifiers.area());
    const std::size_t textStart = out.size() - tablesStart;
    const std::size_t processStart =
        out.bytes(texts.area()).align(tablesStart).size() - tablesStart;
    const std::size_t personaStart = out.bytes(processes.view()).size() - tablesStart;
    const std::set<std::uint32_t> personas = personasOf(catalog.processes);
    const std::size_t subChunkStart = out.bytes(personaSection(personas)).size() - tablesStart;
    out.bytes(subChunks.view());
    out.put(0, static_cast<std::uint16_t>(textStart));
    out.put(2, static_cast<std::uint16_t>(processStart));
    out.put(4, static_cast<std::uint16_t>(catalog.processes.size()));
    out.put(6, static_cast<std::uint16_t>(subChunkStart));
    out.put(8, static_cast<std::uint16_t>(catalog.subChunks.size()));
    if (!personas.empty()) {
        out.put(10, static_cast<std::uint16_t>(personaStart));
        out.put(12, static_cast<std::uint16_t>(personas.size()));
    }

    Bytes bytes = out.take();
    if (catalog.edit)
        catalog.edit(bytes);
    return bytes;
}

} // namespace logstore::writer
