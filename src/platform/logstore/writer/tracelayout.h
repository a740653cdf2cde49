// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/tracefile.h"

#include <cstdint>
#include <map>
#include <vector>

namespace logstore::writer {

/// Lays records out as the log daemon does: pages of one process, chunk sets of about 64 KiB, a
/// catalog for every few of them; items that are large go to oversize chunks; both
/// compressions, in turns.
class TraceLayout
{
public:
    explicit TraceLayout(Header header);

    /// The process must stay where it is until finish(): its subsystems may still grow.
    void add(const Process& process, Record record, std::uint8_t stream = PersistentStream);
    void add(const Process& process, StateDump dump);
    void add(const Process& process, SimpleDump dump);

    TraceFile finish();

private:
    struct Page
    {
        std::size_t index = 0; ///< in the chunk set
        std::size_t used = 0;
    };

    void moveOutItems(const Process& process, Record& record);
    Page& pageFor(const Process& process, std::uint8_t stream, std::size_t room);
    void addChunk(const Process& process, Chunk chunk, std::size_t size);
    void closeSet();
    void closeSection();
    Packing nextPacking();

    TraceFile m_file;
    std::vector<ChunkSet> m_sets; ///< of the section that is being filled
    ChunkSet m_set;
    std::size_t m_setSize = 0;
    std::map<std::pair<const Process*, std::uint8_t>, Page>
        m_pages;                             ///< of the set that is being filled
    std::vector<const Process*> m_processes; ///< of the section
    std::uint32_t m_nextOversize = 1;
    std::size_t m_packed = 0; ///< how many sets are
};

} // namespace logstore::writer
