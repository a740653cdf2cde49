// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/lzbitmap.h"

#include <algorithm>
#include <map>
#include <optional>

namespace logstore::writer {

namespace {

constexpr std::size_t groupSize = 8;
constexpr std::size_t chunkHeadSize = 6;
constexpr std::size_t packedHeadSize = 15;
constexpr std::size_t tableSize = 17;
constexpr std::size_t entryBits = 10;
constexpr unsigned tableTokens = 3; ///< the first token of the table
constexpr unsigned runMark = 15;
constexpr std::size_t shortestRun = 4;
constexpr std::size_t largestDistance = 0xffff;

void append24(ByteBuilder& out, std::size_t value)
{
    out.u16(static_cast<std::uint16_t>(value)).u8(static_cast<std::uint8_t>(value >> 16));
}

/// Eight bytes of output: which of them are literals, and the distance of the others where it
/// changes.
struct Group
{
    std::uint8_t bitmap = 0xff;
    std::size_t distance = 0;
    std::size_t distanceBytes = 0;

    using Shape = std::pair<std::uint8_t, std::size_t>; ///< what a token of the table stands for
    Shape shape() const { return {bitmap, distanceBytes}; }
};

/// Finds for each group of the content the distance that leaves the fewest bytes to be stored.
class GroupFinder
{
public:
    explicit GroupFinder(ByteView content)
        : m_content(content)
        , m_lastAt(std::size_t{1} << hashBits)
    {
    }

    /// The groups of a chunk.
    std::vector<Group> groups(std::size_t from, std::size_t to)
    {
        std::vector<Group> found;
        std::size_t distance = groupSize;
        for (std::size_t at = from; at < to; at += groupSize) {
            found.push_back(best(at, std::min(groupSize, to - at), distance));
            if (found.back().distanceBytes > 0)
                distance = found.back().distance;
        }
        return found;
    }

private:
    static constexpr unsigned hashBits = 12;

    Group best(std::size_t at, std::size_t size, std::size_t current)
    {
        Group best = group(at, size, current, 0);
        for (std::size_t shift = 0; shift + 4 <= size; ++shift) {
            std::size_t& last = m_lastAt[hash(at + shift)];
            const std::size_t distance = at + shift + 1 - last;
            if (last > 0 && distance <= largestDistance && distance != current) {
                const Group other = group(at, size, distance, distance > 0xff ? 2 : 1);
                if (cost(other) < cost(best))
                    best = other;
            }
            last = at + shift + 1;
        }
        return best;
    }

    Group
    group(std::size_t at, std::size_t size, std::size_t distance, std::size_t distanceBytes) const
    {
        unsigned bitmap = 0;
        for (std::size_t i = 0; i < size; ++i)
            if (distance > at + i || m_content[at + i] != m_content[at + i - distance])
                bitmap |= 1U << i;
        return {static_cast<std::uint8_t>(bitmap), distance, distanceBytes};
    }

    static std::size_t cost(const Group& group)
    {
        std::size_t bytes = group.distanceBytes;
        for (unsigned bits = group.bitmap; bits != 0; bits &= bits - 1)
            ++bytes;
        return bytes;
    }

    std::size_t hash(std::size_t at) const
    {
        std::uint32_t four = 0;
        std::memcpy(&four, &m_content[at], sizeof four);
        return four * 2654435761U >> (32 - hashBits);
    }

    ByteView m_content;
    std::vector<std::size_t> m_lastAt; ///< one more than the place of four bytes, by their hash
};

/// The commonest shapes of groups, which get tokens of their own.
std::vector<Group::Shape> commonShapes(const std::vector<Group>& groups, std::size_t count)
{
    std::map<Group::Shape, std::size_t> uses;
    for (const Group& group : groups)
        ++uses[group.shape()];
    std::vector<Group::Shape> shapes;
    for (const auto& [shape, ignored] : uses)
        shapes.push_back(shape);
    std::stable_sort(shapes.begin(), shapes.end(),
                     [&uses](const auto& a, const auto& b) { return uses[a] > uses[b]; });
    shapes.resize(std::min(shapes.size(), count));
    return shapes;
}

Bytes tableBytes(const std::vector<Group::Shape>& shapes)
{
    Bytes table(tableSize);
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const unsigned entry = shapes[i].first | static_cast<unsigned>(shapes[i].second) << 8;
        for (std::size_t bit = 0; bit < entryBits; ++bit)
            if (entry >> bit & 1)
                table[(i * entryBits + bit) / 8] |=
                    static_cast<std::uint8_t>(1U << (i * entryBits + bit) % 8);
    }
    return table;
}

/// Two to a byte, the low half first.
Bytes packedTokens(const std::vector<unsigned>& tokens)
{
    Bytes packed((tokens.size() + 1) / 2);
    for (std::size_t i = 0; i < tokens.size(); ++i)
        packed[i / 2] |= static_cast<std::uint8_t>(tokens[i] << i % 2 * 4);
    return packed;
}

/// Counts equal tokens in a row: after the first a mark and a number of half bytes.
std::vector<unsigned> withRuns(const std::vector<unsigned>& tokens)
{
    std::vector<unsigned> counted;
    for (std::size_t at = 0; at < tokens.size();) {
        std::size_t length = 1;
        while (at + length < tokens.size() && tokens[at + length] == tokens[at])
            ++length;
        if (length < shortestRun)
            length = 1;
        counted.push_back(tokens[at]);
        at += length;
        if (length == 1)
            continue;
        counted.push_back(runMark);
        for (length -= shortestRun; length >= runMark; length -= runMark)
            counted.push_back(runMark);
        counted.push_back(static_cast<unsigned>(length));
    }
    return counted;
}

Bytes packedChunk(const std::vector<Group>& groups, ByteView content, bool runs)
{
    const auto shapes = commonShapes(groups, runs ? 12 : 13);
    ByteBuilder literals;
    ByteBuilder distances;
    ByteBuilder bitmaps;
    std::vector<unsigned> tokens;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const Group& group = groups[i];
        const auto known = std::find(shapes.begin(), shapes.end(), group.shape());
        if (known == shapes.end())
            bitmaps.u8(group.bitmap);
        tokens.push_back(known == shapes.end()
                             ? static_cast<unsigned>(group.distanceBytes)
                             : tableTokens + static_cast<unsigned>(known - shapes.begin()));
        for (std::size_t byte = 0; byte < group.distanceBytes; ++byte)
            distances.u8(static_cast<std::uint8_t>(group.distance >> byte * 8));
        for (std::size_t place = 0; place < groupSize; ++place)
            if (group.bitmap >> place & 1)
                literals.u8(content[i * groupSize + place]);
    }
    const Bytes packed = packedTokens(runs ? withRuns(tokens) : tokens);
    const std::size_t distancesAt = packedHeadSize + literals.size();
    const std::size_t bitmapsAt = distancesAt + distances.size();
    const std::size_t tokensAt = bitmapsAt + bitmaps.size();
    ByteBuilder chunk;
    for (const std::size_t value :
         {tokensAt + packed.size() + tableSize, content.size(), distancesAt, bitmapsAt, tokensAt})
        append24(chunk, value);
    return chunk.bytes(literals.view())
        .bytes(distances.view())
        .bytes(bitmaps.view())
        .bytes(packed)
        .bytes(tableBytes(shapes))
        .take();
}

} // namespace

std::uint8_t LzbitmapFormat::flags() const
{
    return static_cast<std::uint8_t>(0x08 | (largeChunks ? 0x01 : 0) | (runs ? 0 : 0x04));
}

Bytes lzbitmapStream(ByteView content, LzbitmapFormat format)
{
    ByteBuilder out;
    out.text("ZBM").u8(format.flags());
    const std::size_t chunkSize = format.largeChunks ? 0x8000 : 0x4000;
    GroupFinder finder(content);
    for (std::size_t at = 0; at < content.size(); at += chunkSize) {
        const ByteView piece = content.subspan(at, std::min(chunkSize, content.size() - at));
        const Bytes chunk = packedChunk(finder.groups(at, at + piece.size()), piece, format.runs);
        if (chunk.size() < piece.size() + chunkHeadSize) {
            out.bytes(chunk);
            continue;
        }
        append24(out, piece.size() + chunkHeadSize);
        append24(out, piece.size());
        out.bytes(piece);
    }
    append24(out, chunkHeadSize);
    append24(out, 0);
    return out.take();
}

} // namespace logstore::writer
