// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/file.h"
#include "platform/logstore/trace/chunk.h"

#include <functional>
#include <optional>

namespace logstore {

/// A header, catalog or chunk set of a trace file.
struct OuterChunk
{
    ChunkTag tag;
    std::uint64_t offset; ///< of the body
    std::uint64_t size;   ///< of the body, as far as the file holds it
};

/// Walks the outer chunks of a trace file. After damage it continues at the next offset that can be
/// a head, so that a wrong size or a zeroed sector costs only the chunks that it hits.
class OuterChunks
{
public:
    /// Called now and then with the offset that the walk has reached; false ends the walk.
    using Watch = std::function<bool(std::uint64_t reached)>;

    /// The file must outlive the walk.
    explicit OuterChunks(const File& file, Watch watch = {});

    /// The next chunk; absent at the end. Chunks with unknown tags are left out.
    std::optional<OuterChunk> next();

    /// The number of damaged or unknown pieces found so far. A cut last chunk and zeros at the
    /// end of the file do not count: a file that is being written looks like that.
    std::uint32_t damagedPieces() const { return m_damagedPieces; }

private:
    struct Head : ChunkHead
    {
        /// False when the first block of a chunk set gives it another size. A set of several
        /// blocks is one of these; real sets have one.
        bool sizeFits = true;
    };
    Head headAt(std::uint64_t offset) const;
    bool isComplete(std::uint64_t offset, const Head& head);
    bool canBeChunk(std::uint64_t offset, const Head& head);
    Bytes window(std::uint64_t offset);
    std::optional<std::uint64_t> findHead(std::uint64_t from);
    std::optional<OuterChunk> passDamage(const ChunkHead& head);
    std::uint64_t left(std::uint64_t offset) const;

    const File& m_file;
    Watch m_watch;
    std::uint64_t m_offset = 0; ///< of the next head
    std::uint64_t m_peekedOffset = UINT64_MAX;
    Head m_peeked{};
    std::vector<std::uint8_t> m_window;
    std::uint64_t m_windowStart = 0;
    std::uint32_t m_damagedPieces = 0;
    std::uint32_t m_chunksRead = 0;
    std::uint32_t m_falseHeads = 0;
    bool m_onlyZerosPassed = false; ///< by the last search for a head
};

} // namespace logstore
