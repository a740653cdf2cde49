// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/outerchunks.h"

#include <algorithm>

namespace logstore {

namespace {

/// Two reads for each: a crafted file must not make the search slow.
constexpr std::uint32_t mostFalseHeads = 4096;
constexpr std::uint32_t chunksBetweenLooks = 64;
constexpr std::size_t searchBlock = std::size_t{64} << 10;
constexpr std::size_t alignment = 8;

bool isOuter(ChunkTag tag)
{
    return tag == ChunkTag::Header || tag == ChunkTag::Catalog || tag == ChunkTag::ChunkSet;
}

bool isZero(const ChunkHead& head)
{
    return head.tag == ChunkTag{} && head.bodySize == 0;
}

/// The offset in `block` of the next multiple of 8 that starts with an outer tag; the block's size
/// when there is none. Clears `onlyZeros` when it passes other bytes.
std::size_t nextTag(Bytes block, std::size_t from, bool& onlyZeros)
{
    for (std::size_t at = from; block.size() - at >= alignment; at += alignment) {
        const auto word = loadAt<std::uint64_t>(block, at);
        if (word == 0)
            continue;
        if (isOuter(static_cast<ChunkTag>(static_cast<std::uint32_t>(word))))
            return at;
        onlyZeros = false;
    }
    return block.size();
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
        const ChunkHead head = m_offset == m_peekedOffset ? m_peeked : headAt(m_offset);
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

ChunkHead OuterChunks::headAt(std::uint64_t offset) const
{
    std::uint8_t bytes[ChunkHead::size] = {};
    m_file.readAt(offset, bytes);
    return ChunkHead::read(bytes);
}

/// Whether the chunk ends where the file does, or where another one starts.
bool OuterChunks::isComplete(std::uint64_t offset, const ChunkHead& head)
{
    const std::uint64_t body = offset + ChunkHead::size;
    if (isZero(head) || head.bodySize > left(body))
        return false;
    const std::uint64_t end = body + head.bodySize + ChunkHead::padding(head.bodySize);
    if (left(end) < ChunkHead::size)
        return true;
    m_peekedOffset = end;
    m_peeked = headAt(end);
    return isOuter(m_peeked.tag) || (isOuter(head.tag) && isZero(m_peeked));
}

/// Less strict, for a chunk set that the file's end cuts or after which more damage follows.
bool OuterChunks::canBeChunk(std::uint64_t offset, const ChunkHead& head)
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
    std::uint64_t start = (from + alignment - 1) / alignment * alignment;
    for (start = m_file.nextData(start); left(start) >= ChunkHead::size;
         start = m_file.nextData(start)) {
        if (m_watch && !m_watch(start))
            return std::nullopt;
        const Bytes block = window(start);
        for (std::size_t at = nextTag(block, 0, m_onlyZerosPassed); at < block.size();
             at = nextTag(block, at + alignment, m_onlyZerosPassed)) {
            if (canBeChunk(start + at, headAt(start + at)))
                return start + at;
            m_onlyZerosPassed = false;
            if (++m_falseHeads > mostFalseHeads)
                return std::nullopt;
        }
        if (block.size() < alignment)
            return std::nullopt; // the file has become shorter
        start += block.size() / alignment * alignment;
    }
    return std::nullopt;
}

/// A chunk whose size is wrong, or after which the next head is: its body reaches to the next head
/// that is found. Blocks and catalogs know their own ends, so more than the body does no harm.
std::optional<OuterChunk> OuterChunks::passDamage(const ChunkHead& head)
{
    const bool isChunk = isOuter(head.tag);
    const std::uint64_t body = m_offset + ChunkHead::size;
    const bool isCut = isChunk && head.bodySize > left(body);
    const auto found = findHead(isChunk ? body : m_offset + alignment);
    if (found || !(isCut || (isZero(head) && m_onlyZerosPassed)))
        ++m_damagedPieces;
    m_offset = found.value_or(m_file.size());
    if (!isChunk)
        return std::nullopt;
    return OuterChunk{head.tag, body, m_offset - body};
}

} // namespace logstore
