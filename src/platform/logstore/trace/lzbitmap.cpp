// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/lzbitmap.h"

#include <algorithm>
#include <array>

namespace logstore {

namespace {

constexpr std::uint32_t marker = 0x4d425a; // "ZBM"; the fourth byte holds the flags
constexpr std::size_t streamHeadSize = 4;

enum StreamFlag : std::uint8_t { LargeChunks = 0x01, NoRuns = 0x04, AlwaysSet = 0x08 };

constexpr std::size_t chunkHeadSize = 6; ///< two sizes of 24 bits
constexpr std::size_t packedHeadSize = 15;
constexpr std::size_t tableSize = 17; ///< the end of a packed chunk
constexpr std::size_t largestOutput = 32768;
constexpr std::size_t groupSize = 8;

std::uint32_t load24(Bytes bytes, std::size_t offset)
{
    return loadAt<std::uint16_t>(bytes, offset)
           | std::uint32_t{loadAt<std::uint8_t>(bytes, offset + 2)} << 16;
}

// How the first so many literals of a group come to the places that a bitmap gives them: each moves
// up by 4, by 2 and by 1 bytes, or not, from the widest step to the smallest; so none meets
// another. The masks are of the places that a step moves bytes to.
struct Spread
{
    std::uint64_t by4 = 0;
    std::uint64_t by2 = 0;
    std::uint64_t by1 = 0;
    std::uint64_t literals = 0; ///< mask of the places that are literals in the end
    std::size_t count = 0;      ///< of literals

    constexpr std::uint64_t operator()(std::uint64_t bytes) const
    {
        bytes = (bytes & ~by4) | (bytes << 32 & by4);
        bytes = (bytes & ~by2) | (bytes << 16 & by2);
        return (bytes & ~by1) | (bytes << 8 & by1);
    }
};

constexpr std::array<Spread, 256> makeSpreads()
{
    std::array<Spread, 256> spreads;
    for (unsigned bitmap = 0; bitmap < spreads.size(); ++bitmap) {
        Spread& spread = spreads[bitmap];
        for (unsigned place = 0; place < groupSize; ++place) {
            if ((bitmap >> place & 1) == 0)
                continue;
            const auto maskAt = [](std::size_t at) { return std::uint64_t{0xff} << at * 8; };
            const std::size_t steps = place - spread.count;
            if (steps & 4)
                spread.by4 |= maskAt(spread.count + 4);
            if (steps & 2)
                spread.by2 |= maskAt(spread.count + (steps & 6));
            if (steps & 1)
                spread.by1 |= maskAt(place);
            spread.literals |= maskAt(place);
            ++spread.count;
        }
    }
    return spreads;
}

constexpr std::array<Spread, 256> spreads = makeSpreads();

/// What a token does, as masks: a group is made without a branch on it.
struct Token
{
    std::uint8_t bitmap = 0;
    std::uint8_t bitmapMask = 0;    ///< of the next of the bitmaps
    std::uint16_t distanceMask = 0; ///< of the next two bytes of the distances
    std::uint16_t distanceKept = 0; ///< mask of the distance there is
    std::uint8_t bitmapBytes = 0;
    std::uint8_t distanceBytes = 0;

    static Token make(std::size_t distanceBytes)
    {
        constexpr std::array<std::uint16_t, 4> masks{0, 0xff, 0xffff, 0};
        Token token;
        token.distanceBytes = static_cast<std::uint8_t>(distanceBytes);
        token.distanceMask = masks[distanceBytes];
        token.distanceKept = distanceBytes == 0 ? 0xffff : 0;
        return token;
    }
    bool isValid() const { return distanceBytes <= 2; }
};
constexpr unsigned tableTokens = 3; ///< the first token of the table
constexpr unsigned runMark = 15;    ///< with runs, not a token of its own
constexpr unsigned shortestRun = 4; ///< what the half bytes of a length are added to

/// The tokens by number. The table at a chunk's end is a row of bits, 10 for each token: the
/// bitmap, above it the number of distance bytes.
std::array<Token, 16> readTable(Bytes table, bool hasRuns)
{
    constexpr std::size_t entryBits = 10;
    std::array<Token, 16> tokens{};
    for (unsigned i = 0; i < tableTokens; ++i) {
        tokens[i] = Token::make(i);
        tokens[i].bitmapMask = 0xff;
        tokens[i].bitmapBytes = 1;
    }
    for (unsigned i = tableTokens; i < tokens.size(); ++i) {
        const std::size_t bit = (i - tableTokens) * entryBits;
        const unsigned entry = loadAt<std::uint16_t>(table, bit / 8) >> bit % 8;
        tokens[i] = Token::make(entry >> 8 & 3);
        tokens[i].bitmap = static_cast<std::uint8_t>(entry);
    }
    if (hasRuns)
        tokens[runMark] = Token::make(3);
    return tokens;
}

/// Half bytes, the low one of each byte first. Past the end they are zero, and ok() is false.
class HalfBytes
{
public:
    explicit HalfBytes(Bytes bytes) : m_bytes(bytes) {}

    unsigned peek() const
    {
        return m_at / 2 < m_bytes.size() ? m_bytes[m_at / 2] >> m_at % 2 * 4 & 15 : 0U;
    }
    unsigned next()
    {
        const unsigned value = peek();
        ++m_at;
        return value;
    }
    bool ok() const { return m_at <= m_bytes.size() * 2; }

private:
    Bytes m_bytes;
    std::size_t m_at = 0;
};

/// Makes the output of one packed chunk.
class ChunkExpander
{
public:
    /// The chunk must be sound.
    ChunkExpander(Bytes chunk, bool hasRuns)
        : m_chunk(chunk)
        , m_literals(packedHeadSize)
        , m_distances(load24(chunk, 6))
        , m_bitmaps(load24(chunk, 9))
        , m_tokens(chunk.subspan(load24(chunk, 12), chunk.size() - tableSize - load24(chunk, 12)))
        , m_table(readTable(chunk.last(tableSize), hasRuns))
        , m_hasRuns(hasRuns)
    {
    }

    /// Whether the areas are in order and inside the chunk.
    static bool isSound(Bytes chunk)
    {
        if (chunk.size() < packedHeadSize + tableSize)
            return false;
        const std::array places{std::size_t{packedHeadSize}, std::size_t{load24(chunk, 6)},
                                std::size_t{load24(chunk, 9)}, std::size_t{load24(chunk, 12)},
                                chunk.size() - tableSize};
        return std::is_sorted(places.begin(), places.end());
    }

    /// Fills `out` from `at` on; what stands before it is output of earlier chunks.
    bool expand(std::span<std::uint8_t> out, std::size_t at)
    {
        m_out = out;
        m_at = at;
        while (m_at < m_out.size()) {
            const Token token = m_table[m_tokens.next()];
            std::size_t groups = 1;
            if (m_hasRuns && m_out.size() - m_at > groupSize && m_tokens.peek() == runMark)
                groups = runLength();
            if (!m_tokens.ok() || !token.isValid())
                return false;
            for (; groups > 0 && m_at < m_out.size(); --groups)
                if (!makeGroup(token))
                    return false;
        }
        return true;
    }

private:
    std::size_t runLength()
    {
        m_tokens.next();
        std::size_t length = shortestRun;
        unsigned more = runMark;
        while (more == runMark) {
            more = m_tokens.next();
            length += more;
        }
        return length;
    }

    /// Makes eight bytes at once where as many lie ahead of every cursor and a copy does not
    /// reach into its own group.
    bool makeGroup(const Token& token)
    {
        const std::size_t lastRead = m_chunk.size() - groupSize;
        if (m_literals > lastRead || m_distances > lastRead || m_bitmaps > lastRead
            || m_out.size() - m_at < groupSize)
            return makeGroupBytewise(token);
        const std::uint8_t* const chunk = m_chunk.data();
        const unsigned bitmap = token.bitmap | (chunk[m_bitmaps] & token.bitmapMask);
        m_distance = (m_distance & token.distanceKept)
                     | (load<std::uint16_t>(chunk + m_distances) & token.distanceMask);
        m_bitmaps += token.bitmapBytes;
        m_distances += token.distanceBytes;
        if (m_distance < groupSize || m_distance > m_at)
            return fillBytewise(bitmap, groupSize);
        const Spread& spread = spreads[bitmap];
        const auto literals = load<std::uint64_t>(chunk + m_literals);
        const auto copies = load<std::uint64_t>(m_out.data() + m_at - m_distance);
        const std::uint64_t group =
            (spread(literals) & spread.literals) | (copies & ~spread.literals);
        std::memcpy(m_out.data() + m_at, &group, groupSize);
        m_literals += spread.count;
        m_at += groupSize;
        return true;
    }

    bool makeGroupBytewise(const Token& token)
    {
        if (m_chunk.size() - m_bitmaps < token.bitmapBytes
            || m_chunk.size() - m_distances < token.distanceBytes)
            return false;
        unsigned bitmap = token.bitmap;
        if (token.bitmapBytes > 0)
            bitmap = m_chunk[m_bitmaps];
        if (token.distanceBytes > 0)
            m_distance = token.distanceBytes == 1 ? m_chunk[m_distances]
                                                  : loadAt<std::uint16_t>(m_chunk, m_distances);
        m_bitmaps += token.bitmapBytes;
        m_distances += token.distanceBytes;
        return fillBytewise(bitmap, std::min(groupSize, m_out.size() - m_at));
    }

    bool fillBytewise(unsigned bitmap, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i, ++m_at) {
            const bool isLiteral = (bitmap >> i & 1) != 0;
            if (isLiteral ? m_literals >= m_chunk.size() : m_distance == 0 || m_distance > m_at)
                return false;
            m_out[m_at] = isLiteral ? m_chunk[m_literals++] : m_out[m_at - m_distance];
        }
        return true;
    }

    template <typename T>
    static T load(const std::uint8_t* from)
    {
        T value;
        std::memcpy(&value, from, sizeof value);
        return value;
    }

    Bytes m_chunk;
    std::size_t m_literals;
    std::size_t m_distances;
    std::size_t m_bitmaps;
    HalfBytes m_tokens;
    std::array<Token, 16> m_table;
    std::size_t m_distance = groupSize;
    std::span<std::uint8_t> m_out;
    std::size_t m_at = 0;
    bool m_hasRuns;
};

} // namespace

bool isLzbitmap(Bytes stream)
{
    const auto flags = loadAt<std::uint8_t>(stream, 3);
    return load24(stream, 0) == marker && (flags & ~(LargeChunks | NoRuns)) == AlwaysSet;
}

// "ZBM", flags; chunks: u24 size, u24 size of the output, and either the output as it is or, where
// the size says that there are fewer bytes, the areas
//      6     3  offset of the distances
//      9     3  offset of the bitmaps
//     12     3  offset of the tokens
//     15        literals, distances, bitmaps, tokens
//    -17    17  table of the tokens
// A chunk without output is the last.
bool unpackLzbitmap(Bytes stream, std::size_t limit, std::vector<std::uint8_t>& out)
{
    const bool hasRuns = (loadAt<std::uint8_t>(stream, 3) & NoRuns) == 0;
    for (stream = clipped(stream, streamHeadSize); stream.size() >= chunkHeadSize;) {
        const std::size_t size = load24(stream, 0);
        const std::size_t outputSize = load24(stream, 3);
        if (outputSize == 0)
            return true;
        const std::size_t before = out.size();
        if (size < chunkHeadSize || size > outputSize + chunkHeadSize || size > stream.size()
            || outputSize > largestOutput || outputSize > limit - before)
            return false;
        const Bytes chunk = stream.first(size);
        stream = stream.subspan(size);
        if (size == outputSize + chunkHeadSize) {
            out.insert(out.end(), chunk.begin() + chunkHeadSize, chunk.end());
            continue;
        }
        out.resize(before + outputSize);
        if (!ChunkExpander::isSound(chunk) || !ChunkExpander(chunk, hasRuns).expand(out, before)) {
            out.resize(before);
            return false;
        }
    }
    return false;
}

} // namespace logstore
