// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/tracelayout.h"

#include <algorithm>
#include <array>
#include <utility>

namespace logstore::writer {

namespace {

constexpr std::size_t setSize = 0x10000;
constexpr std::size_t setsPerSection = 8;
constexpr std::size_t pageHead = 16; ///< what a page's own fields take of its size
constexpr std::size_t chunkHead = 16;
constexpr std::size_t largestRecord =
    0x400; ///< with larger items a record goes to an oversize chunk

} // namespace

TraceLayout::TraceLayout(Header header) : m_file{std::move(header), {}}
{
}

void TraceLayout::add(const Process& process, Record record, std::uint8_t stream)
{
    RecordRoom room = roomOf(record);
    if (room.publicSize + room.privateSize > largestRecord && !record.oversize) {
        moveOutItems(process, record);
        room = roomOf(record);
    }
    Page& page = pageFor(process, stream, room.publicSize + room.privateSize);
    page.used += room.publicSize + room.privateSize;
    std::get<Firehose>(m_set.chunks[page.index]).records.push_back(std::move(record));
}

void TraceLayout::add(const Process& process, StateDump dump)
{
    dump.process = process.key;
    const std::size_t size = body(dump).size();
    addChunk(process, std::move(dump), size);
}

void TraceLayout::add(const Process& process, SimpleDump dump)
{
    dump.process = process.key;
    const std::size_t size = body(dump).size();
    addChunk(process, std::move(dump), size);
}

TraceFile TraceLayout::finish()
{
    closeSection();
    return std::move(m_file);
}

void TraceLayout::moveOutItems(const Process& process, Record& record)
{
    Oversize oversize{process.key, record.timeToLive, record.time, m_nextOversize++, {}, {}, {}};
    oversize.items = std::exchange(record.items, {});
    oversize.backtrace = std::exchange(record.backtrace, {});
    record.oversize = oversize.reference;
    // The record must follow its items, so it starts a page of its own after them.
    std::erase_if(m_pages, [&](const auto& page) { return page.first.first == &process; });
    const std::size_t size = body(oversize).size();
    addChunk(process, std::move(oversize), size);
}

TraceLayout::Page&
TraceLayout::pageFor(const Process& process, std::uint8_t stream, std::size_t room)
{
    const auto key = std::pair(&process, stream);
    const auto known = m_pages.find(key);
    if (known != m_pages.end() && known->second.used + room <= firehosePageSize)
        return known->second;
    Firehose firehose;
    firehose.process = process.key;
    firehose.stream = stream;
    addChunk(process, std::move(firehose), firehosePageSize);
    return m_pages[key] = {m_set.chunks.size() - 1, pageHead};
}

void TraceLayout::addChunk(const Process& process, Chunk chunk, std::size_t size)
{
    if (m_setSize + chunkHead + size > setSize)
        closeSet();
    if (m_sets.size() == setsPerSection)
        closeSection();
    if (std::find(m_processes.begin(), m_processes.end(), &process) == m_processes.end())
        m_processes.push_back(&process);
    m_set.chunks.push_back(std::move(chunk));
    m_setSize += chunkHead + size;
}

void TraceLayout::closeSet()
{
    if (m_set.chunks.empty())
        return;
    m_set.packing = nextPacking();
    m_sets.push_back(std::exchange(m_set, {}));
    m_setSize = 0;
    m_pages.clear();
}

Packing TraceLayout::nextPacking()
{
    constexpr std::array<Packing, 3> packings{{{Compression::Lzbitmap, 0, {false, false}},
                                               {Compression::Lz4, 0, {}},
                                               {Compression::Lzbitmap, 0, {true, true}}}};
    return packings[m_packed++ % packings.size()];
}

void TraceLayout::closeSection()
{
    closeSet();
    if (m_sets.empty())
        return;
    Section section;
    section.sets = std::exchange(m_sets, {});
    for (const Process* process : m_processes)
        section.processes.push_back(*process);
    m_processes.clear();
    m_file.sections.push_back(std::move(section));
}

} // namespace logstore::writer
