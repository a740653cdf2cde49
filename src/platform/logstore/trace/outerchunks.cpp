// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/outerchunks.h"

#include <algorithm>
#include <cstring>

namespace logstore {

namespace {

/// Two reads for each: a crafted file must not make the search slow.
constexpr std::uint32_t mostFalseHeads = 4096;
constexpr std::uint32_t chunksBetweenLooks = 64;
constexpr std::size_t searchBlock = std::size_t{64} << 10;
constexpr std::uint32_t compressedMarker = 0x31347662; // "bv41", u32 unpacked, u32 packed size
constexpr std::uint32_t storedMarker = 0x2d347662;     // "bv4-", u32 size
constexpr std::size_t subTagOffset = 4;
constexpr std::uint8_t subTag = 0x11; ///< of all outer chunks
constexpr std::size_t markSize = 8;   ///< tag and sub-tag

bool isOuter(ChunkTag tag)
{
    return tag == ChunkTag::Header || tag == ChunkTag::Catalog || tag == ChunkTag::ChunkSet;
}

bool isZero(const ChunkHead& head)
{
    return head.tag == ChunkTag{} && head.bodySize == 0;
}

/// The first place in `block` from `from` on that looks like the head of an outer chunk, by its tag
/// and sub-tag; the block's size when there is none. Any offset counts, as bytes may have been
/// lost.
std::size_t nextMark(Bytes block, std::size_t from)
{
    while (from + markSize <= block.size()) {
        const std::uint8_t* const begin = block.data() + from + subTagOffset;
        const void* const found = std::memchr(begin, subTag, block.size() - from - (markSize - 1));
        if (!found)
            break;
        const std::size_t at =
            from + static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - begin);
        if (loadAt<std::uint32_t>(block, at + subTagOffset) == subTag
            && isOuter(static_cast<ChunkTag>(loadAt<std::uint32_t>(block, at))))
            return at;
        from = at + 1;
    }
    return block.size();
}

bool isZero(Bytes bytes)
{
    return bytes.empty()
           || (bytes[0] == 0 && std::memcmp(bytes.data(), bytes.data() + 1, bytes.size() - 1) == 0);
}

} // namespace

OuterChunks::OuterChunks(const File& file, Watch watch) : m_file(file), m_watch(std::move(watch))
{
}

std::optional<OuterChunk> OuterChunks::next()
{
    while (left(m_offset) >= ChunkHead::size) {
        if (++m_chunksRead % chunksBetweenLooks == 0 && m_watch && !m_watch(m_offset))
            break;
        const Head head = m_offset == m_peekedOffset ? m_peeked : headAt(m_offset);
        if (!isComplete(m_offset, head)) {
            if (const auto chunk = passDamage(head))
                return chunk;
            continue;
        }
        const OuterChunk chunk{head.tag, m_offset + ChunkHead::size, head.bodySize};
        m_offset = chunk.offset + chunk.size + ChunkHead::padding(chunk.size);
        if (isOuter(chunk.tag))
            return chunk;
        ++m_damagedPieces;
    }
    return std::nullopt;
}

std::uint64_t OuterChunks::left(std::uint64_t offset) const
{
    return offset < m_file.size() ? m_file.size() - offset : 0;
}

OuterChunks::Head OuterChunks::headAt(std::uint64_t offset) const
{
    std::uint8_t bytes[ChunkHead::size + 12] = {};
    m_file.readAt(offset, bytes);
    const Bytes block = Bytes(bytes).subspan(ChunkHead::size);
    Head head{ChunkHead::read(bytes), true};
    if (head.tag == ChunkTag::ChunkSet && loadAt<std::uint32_t>(block) == compressedMarker)
        head.sizeFits = head.bodySize == std::uint64_t{loadAt<std::uint32_t>(block, 8)} + 12 + 4;
    else if (head.tag == ChunkTag::ChunkSet && loadAt<std::uint32_t>(block) == storedMarker)
        head.sizeFits = head.bodySize == std::uint64_t{loadAt<std::uint32_t>(block, 4)} + 8 + 4;
    return head;
}

/// Whether the chunk ends where the file does, or where another one starts.
bool OuterChunks::isComplete(std::uint64_t offset, const Head& head)
{
    const std::uint64_t body = offset + ChunkHead::size;
    if (isZero(head) || !head.sizeFits || head.bodySize > left(body))
        return false;
    const std::uint64_t end = body + head.bodySize + ChunkHead::padding(head.bodySize);
    if (left(end) < ChunkHead::size)
        return true;
    m_peekedOffset = end;
    m_peeked = headAt(end);
    // The tags are small numbers, which other data may hold as well.
    const bool isHead = m_peeked.subTag == subTag || m_peeked.bodySize <= left(end);
    return (isHead && isOuter(m_peeked.tag)) || (isOuter(head.tag) && isZero(m_peeked));
}

/// Less strict, for a chunk set that the file's end cuts or after which more damage follows.
bool OuterChunks::canBeChunk(std::uint64_t offset, const Head& head)
{
    std::uint8_t marker[3] = {};
    if (head.tag == ChunkTag::ChunkSet && left(offset) > ChunkHead::size + sizeof marker)
        m_file.readAt(offset + ChunkHead::size, marker);
    return (marker[0] == 'b' && marker[1] == 'v') || (marker[0] == 'Z' && marker[1] == 'B')
           || isComplete(offset, head);
}

/// Bytes from `offset` on; kept, as damaged pieces may lie close together.
Bytes OuterChunks::window(std::uint64_t offset)
{
    const bool isInside =
        offset >= m_windowStart && offset - m_windowStart + ChunkHead::size <= m_window.size();
    if (!isInside) {
        m_window = m_file.bytesAt(offset, searchBlock);
        m_windowStart = offset;
    }
    return clipped(m_window, offset - m_windowStart);
}

/// The next offset from `from` on at which a chunk can start.
std::optional<std::uint64_t> OuterChunks::findHead(std::uint64_t from)
{
    m_onlyZerosPassed = true;
    for (std::uint64_t start = m_file.nextData(from); left(start) >= ChunkHead::size;
         start = m_file.nextData(start)) {
        const Bytes block = window(start);
        if (block.size() < markSize || (m_watch && !m_watch(start)))
            return std::nullopt;
        for (std::size_t at = nextMark(block, 0); at < block.size(); at = nextMark(block, at + 1)) {
            if (canBeChunk(start + at, headAt(start + at)))
                return start + at;
            if (++m_falseHeads > mostFalseHeads)
                return std::nullopt;
        }
        m_onlyZerosPassed = m_onlyZerosPassed && isZero(block);
        start += block.size() - (markSize - 1);
    }
    return std::nullopt;
}

/// A chunk whose size is wrong, or after which the next head is: its body reaches to the next head
/// that is found. Blocks and catalogs know their own ends, so more than the body does no harm.
std::optional<OuterChunk> OuterChunks::passDamage(const ChunkHead& head)
{
    const bool isChunk = isOuter(head.tag);
    const std::uint64_t body = m_offset + ChunkHead::size;
    const bool isLast =
        isChunk
        && (left(body) < 2 * ChunkHead::size || head.bodySize > left(body) - 2 * ChunkHead::size);
    const auto found = findHead(isChunk ? body : m_offset + 1);
    const bool isAsSaid =
        found && *found == body + head.bodySize + ChunkHead::padding(head.bodySize);
    if (found ? !isAsSaid : !(isLast || (isZero(head) && m_onlyZerosPassed)))
        ++m_damagedPieces;
    m_offset = found.value_or(m_file.size());
    if (!isChunk)
        return std::nullopt;
    return OuterChunk{head.tag, body, m_offset - body};
}

} // namespace logstore
