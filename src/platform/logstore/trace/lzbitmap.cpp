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
    void end() { m_at = SIZE_MAX / 2; }
    bool ok() const { return m_at <= m_bytes.size() * 2; }

private:
    Bytes m_bytes;
    std::size_t m_at = 0;
};

/// The tokens of a chunk, one for each group.
class TokenReader
{
public:
    TokenReader(Bytes area, const std::array<Token, 16>& table, bool hasRuns)
        : m_halves(area)
        , m_table(table.data())
        , m_hasRuns(hasRuns)
    {
    }

    /// Goes to the token of the next group; `left` bytes are still to be made. False, from then on,
    /// when there is none.
    bool prepare(std::size_t left)
    {
        if (m_groups > 0)
            return true;
        m_token = m_table + m_halves.next();
        std::size_t groups = 1;
        if (m_hasRuns && left > groupSize && m_halves.peek() == runMark)
            groups = runLength();
        if (!m_halves.ok() || !m_token->isValid()) {
            m_halves.end();
            return false;
        }
        m_groups = groups;
        return true;
    }
    const Token& token() const { return *m_token; }
    void use() { --m_groups; }

private:
    std::size_t runLength()
    {
        m_halves.next();
        std::size_t length = shortestRun;
        unsigned more = runMark;
        while (more == runMark) {
            more = m_halves.next();
            length += more;
        }
        return length;
    }

    HalfBytes m_halves;
    const Token* m_table;
    const Token* m_token = nullptr;
    std::size_t m_groups = 0; ///< that the token still stands for
    bool m_hasRuns;
};

template <typename T>
T load(const std::uint8_t* from)
{
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

/// Eight bytes that repeat the first `distance` of these; fewer than eight.
std::uint64_t repeated(std::uint64_t bytes, std::size_t distance)
{
    constexpr std::array<std::uint64_t, groupSize> factors{
        0,           0x0101010101010101, 0x0001000100010001, 0x0001000001000001,
        0x100000001, 0x10000000001,      0x1000000000001,    0x100000000000001};
    return (bytes & ((std::uint64_t{1} << distance * 8) - 1)) * factors[distance];
}

/// Makes the output of one packed chunk.
class ChunkExpander
{
public:
    /// The chunk must be sound.
    ChunkExpander(Bytes chunk, bool hasRuns)
        : m_chunk(chunk)
        , m_table(readTable(chunk.last(tableSize), hasRuns))
        , m_tokens(
              chunk.first(chunk.size() - tableSize).subspan(load24(chunk, 12)), m_table, hasRuns)
        , m_cursors{packedHeadSize, load24(chunk, 6), load24(chunk, 9), 0, groupSize}
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
        m_cursors.at = at;
        while (m_cursors.at < m_out.size()) {
            makeEasyGroups();
            const std::size_t left = m_out.size() - m_cursors.at;
            if (left > 0 && !(m_tokens.prepare(left) && makeGroup()))
                return false;
        }
        return true;
    }

private:
    struct Cursors
    {
        std::size_t literals;
        std::size_t distances;
        std::size_t bitmaps;
        std::size_t at; ///< in the output
        std::size_t distance;
    };

    /// Makes groups of eight bytes at once for as long as so many lie ahead of every cursor, and no
    /// literal is copied within its own group.
    void makeEasyGroups()
    {
        const std::uint8_t* const chunk = m_chunk.data();
        std::uint8_t* const out = m_out.data();
        const std::size_t lastRead = m_chunk.size() - groupSize;
        Cursors next = m_cursors; // all that changes is local, or every group would store it
        TokenReader tokens = m_tokens;
        for (;;) {
            const std::size_t left = m_out.size() - next.at;
            if (left < groupSize
                || std::max({next.literals, next.distances, next.bitmaps}) > lastRead
                || !tokens.prepare(left))
                break;
            const Token& token = tokens.token();
            const unsigned bitmap = token.bitmap | (chunk[next.bitmaps] & token.bitmapMask);
            const std::size_t distance =
                (next.distance & token.distanceKept)
                | (load<std::uint16_t>(chunk + next.distances) & token.distanceMask);
            if (distance - 1 >= next.at)
                break;
            auto copies = load<std::uint64_t>(out + next.at - distance);
            if (distance < groupSize) {
                if (bitmap != 0)
                    break;
                copies = repeated(copies, distance);
            }
            const Spread& spread = spreads[bitmap];
            const std::uint64_t group =
                (spread(load<std::uint64_t>(chunk + next.literals)) & spread.literals)
                | (copies & ~spread.literals);
            std::memcpy(out + next.at, &group, groupSize);
            next = {next.literals + spread.count, next.distances + token.distanceBytes,
                    next.bitmaps + token.bitmapBytes, next.at + groupSize, distance};
            tokens.use();
        }
        m_cursors = next;
        m_tokens = tokens;
    }

    bool makeGroup()
    {
        const Token& token = m_tokens.token();
        Cursors& next = m_cursors;
        if (m_chunk.size() - next.bitmaps < token.bitmapBytes
            || m_chunk.size() - next.distances < token.distanceBytes)
            return false;
        unsigned bitmap = token.bitmap;
        if (token.bitmapBytes > 0)
            bitmap = m_chunk[next.bitmaps];
        if (token.distanceBytes > 0)
            next.distance = token.distanceBytes == 1
                                ? m_chunk[next.distances]
                                : loadAt<std::uint16_t>(m_chunk, next.distances);
        next.bitmaps += token.bitmapBytes;
        next.distances += token.distanceBytes;
        m_tokens.use();
        return makeBytes(bitmap, std::min(groupSize, m_out.size() - next.at));
    }

    bool makeBytes(unsigned bitmap, std::size_t size)
    {
        Cursors& next = m_cursors;
        for (std::size_t i = 0; i < size; ++i, ++next.at) {
            const bool isLiteral = (bitmap >> i & 1) != 0;
            if (isLiteral ? next.literals >= m_chunk.size()
                          : next.distance == 0 || next.distance > next.at)
                return false;
            m_out[next.at] = isLiteral ? m_chunk[next.literals++] : m_out[next.at - next.distance];
        }
        return true;
    }

    Bytes m_chunk;
    std::array<Token, 16> m_table;
    TokenReader m_tokens;
    Cursors m_cursors;
    std::span<std::uint8_t> m_out;
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
