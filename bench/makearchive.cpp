// SPDX-License-Identifier: MIT
//
// makearchive SOURCE.logarchive TARGET.logarchive MEGABYTES [lzbitmap]
//
// Makes a large archive for measurements: the trace file of SOURCE over and over, each copy at
// later times, spread over several boots and files of both Persist and Special. Compressed with LZ4
// when not told otherwise.
#include "platform/logstore/trace/unpack.h"
#include "platform/logstore/writer/bytebuilder.h"
#include "platform/logstore/writer/chunk.h"
#include "platform/logstore/writer/storefiles.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;
using namespace logstore::writer;

namespace {

constexpr std::size_t copiesPerFile = 20;
constexpr std::size_t bytesPerBoot = 60'000'000;
constexpr std::int64_t nanosecondsPerHour = 3'600'000'000'000;
constexpr std::size_t specialShare = 7; // one copy in so many stands in Special

struct ChunkSet
{
    Bytes content;
    std::vector<std::size_t> times; // where its continuous times stand
};

struct Section
{
    Bytes catalog;
    std::vector<std::size_t> times;
    std::vector<ChunkSet> sets;
};

struct Trace
{
    Bytes header;
    std::vector<Section> sections;
    std::uint64_t earliest = UINT64_MAX;
    std::uint64_t latest = 0;
    std::size_t fileSize = 0;
    std::size_t entries = 0;
};

[[noreturn]] void stop(const std::string& reason)
{
    std::fprintf(stderr, "makearchive: %s\n", reason.c_str());
    std::exit(1);
}

template <typename T>
T load(ByteView bytes, std::size_t offset)
{
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T))
        stop("the source is damaged: a field at byte " + std::to_string(offset) + " is cut off");
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

ByteView part(ByteView bytes, std::size_t offset, std::uint64_t size)
{
    if (offset > bytes.size() || size > bytes.size() - offset)
        stop("the source is damaged: a chunk at byte " + std::to_string(offset) + " is cut off");
    return bytes.subspan(offset, static_cast<std::size_t>(size));
}

constexpr std::size_t aligned(std::size_t offset)
{
    return (offset + 7) / 8 * 8;
}

Bytes unpacked(ByteView body)
{
    Bytes content;
    if (logstore::unpackChunkSet(body, content) != logstore::Unpacked::Whole)
        stop("the source holds a chunk set that does not decompress");
    return content;
}

std::size_t firehoseRecords(ByteView body)
{
    std::size_t count = 0;
    const std::size_t end = 16 + load<std::uint16_t>(body, 16);
    for (std::size_t at = 32; at + 24 <= end && body[at] != 0;) {
        const auto kind = body[at];
        count += kind == 2 || kind == 3 || kind == 4 || kind == 6 || kind == 7;
        at = aligned(at + 24 + load<std::uint16_t>(body, at + 22));
    }
    return count;
}

bool isInnerTag(std::uint32_t tag)
{
    return tag >= FirehoseChunk && tag <= SimpleDumpChunk;
}

ChunkSet readChunkSet(ByteView body, std::size_t& entries)
{
    ChunkSet set{unpacked(body), {}};
    for (std::size_t at = 0; at + 16 <= set.content.size();) {
        const auto tag = load<std::uint32_t>(set.content, at);
        if (!isInnerTag(tag))
            break;
        const auto inner = part(set.content, at + 16, load<std::uint64_t>(set.content, at + 8));
        set.times.push_back(at + 16 + (tag == FirehoseChunk ? 24 : 16));
        if (tag == FirehoseChunk)
            entries += firehoseRecords(inner);
        else if (tag != OversizeChunk)
            ++entries;
        const std::size_t end = at + 16 + inner.size();
        const bool padded = aligned(end) + 4 > set.content.size()
                            || isInnerTag(load<std::uint32_t>(set.content, aligned(end)));
        at = padded ? aligned(end) : end;
    }
    return set;
}

/// Where a catalog's times stand: its own, and two for each sub-chunk.
std::vector<std::size_t> catalogTimes(ByteView body)
{
    std::vector<std::size_t> times{16};
    std::size_t at = 24 + load<std::uint16_t>(body, 6);
    for (int i = load<std::uint16_t>(body, 8); i > 0; --i) {
        times.insert(times.end(), {at, at + 8});
        const std::size_t strings = at + 28 + std::size_t{2} * load<std::uint32_t>(body, at + 24);
        at = aligned(strings + 4 + std::size_t{2} * load<std::uint32_t>(body, strings));
    }
    return times;
}

Trace readTrace(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    const Bytes file{std::istreambuf_iterator<char>(in), {}};
    Trace trace;
    trace.fileSize = file.size();
    for (std::size_t at = 0; at + 16 <= file.size();) {
        const auto body = part(file, at + 16, load<std::uint64_t>(file, at + 8));
        switch (load<std::uint32_t>(file, at)) {
        case HeaderChunk: trace.header.assign(body.begin(), body.end()); break;
        case CatalogChunk:
            trace.sections.push_back({Bytes(body.begin(), body.end()), catalogTimes(body), {}});
            for (std::size_t i = 1; i < trace.sections.back().times.size(); ++i) {
                const auto time = load<std::uint64_t>(body, trace.sections.back().times[i]);
                trace.earliest = std::min(trace.earliest, time);
                trace.latest = std::max(trace.latest, time);
            }
            break;
        case ChunkSetChunk:
            if (trace.sections.empty())
                stop("the source has a chunk set without catalog");
            trace.sections.back().sets.push_back(readChunkSet(body, trace.entries));
            break;
        default: break;
        }
        at = aligned(at + 16 + body.size());
    }
    if (trace.header.size() < 208 || trace.earliest >= trace.latest)
        stop("'" + path.string() + "' is no usable trace file");
    return trace;
}

fs::path traceFileOf(const fs::path& archive)
{
    for (const auto& entry : fs::directory_iterator(archive / "Persist"))
        if (entry.path().extension() == ".tracev3")
            return entry.path();
    stop("'" + archive.string() + "' has no trace file in Persist");
}

Bytes shifted(Bytes bytes, const std::vector<std::size_t>& times, std::uint64_t shift)
{
    for (const std::size_t at : times) {
        const auto time = load<std::uint64_t>(bytes, at) + shift;
        std::memcpy(&bytes[at], &time, sizeof time);
    }
    return bytes;
}

void appendCopy(ByteBuilder& out, const Trace& trace, Packing packing, std::uint64_t shift)
{
    for (const auto& section : trace.sections) {
        appendChunk(out, CatalogChunk, shifted(section.catalog, section.times, shift));
        for (const auto& set : section.sets)
            appendChunk(out, ChunkSetChunk,
                        chunkSetBody(shifted(set.content, set.times, shift), packing));
    }
}

std::int64_t nanoseconds(const Boot& boot, std::uint64_t ticks)
{
    __extension__ using Wide = __int128;
    return static_cast<std::int64_t>(static_cast<Wide>(ticks) * boot.numerator / boot.denominator);
}

std::uint64_t ticks(const Boot& boot, std::int64_t nanoseconds)
{
    return static_cast<std::uint64_t>(nanoseconds) * boot.denominator / boot.numerator;
}

void appendHeader(ByteBuilder& out, const Trace& trace, const Boot& boot, std::uint64_t start)
{
    ByteBuilder header;
    header.bytes(trace.header);
    const std::int64_t wall = boot.wallTime + nanoseconds(boot, start);
    header.put(16, wall / 1'000'000'000);
    header.put(24, static_cast<std::int32_t>(wall % 1'000'000'000 / 1000));
    header.put(48, start);
    for (std::size_t i = 0; i < boot.uuid.bytes.size(); ++i)
        header.put(128 + i, boot.uuid.bytes[i]);
    appendChunk(out, HeaderChunk, header.view());
}

void save(const fs::path& path, const Bytes& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
        stop("cannot write '" + path.string() + "'");
}

/// A sync record per hour, each a little off the boot's own clock as a corrected clock is.
std::vector<Sync> hourlySyncs(const Boot& boot, std::uint64_t latest)
{
    std::vector<Sync> syncs;
    const std::uint64_t hour = ticks(boot, nanosecondsPerHour);
    for (std::uint64_t time = hour; time <= latest; time += hour) {
        const auto correction = static_cast<std::int64_t>(time / hour % 5) * 7'000'000 - 14'000'000;
        syncs.push_back({time, boot.wallTime + nanoseconds(boot, time) + correction, 0, false});
    }
    return syncs;
}

class Multiplier
{
public:
    Multiplier(const Trace& trace, fs::path target, Packing packing)
        : m_trace(trace)
        , m_target(std::move(target))
        , m_packing(packing)
        , m_step((trace.latest - trace.earliest) / 50 * 49) // copies overlap by a fiftieth
    {
        const auto seconds = load<std::int64_t>(trace.header, 16);
        m_boot.numerator = load<std::uint32_t>(trace.header, 0);
        m_boot.denominator = load<std::uint32_t>(trace.header, 4);
        m_boot.wallTime =
            seconds * 1'000'000'000 - nanoseconds(m_boot, load<std::uint64_t>(trace.header, 48));
        std::copy_n(trace.header.begin() + 128, 16, m_boot.uuid.bytes.begin());
    }

    /// Returns the number of boundaries of the boot: its start, and the sync records among its
    /// entries.
    std::size_t writeBoot(std::size_t copies)
    {
        const std::size_t special = copies / specialShare;
        const std::size_t persist = copies - special;
        const std::uint64_t latest = m_trace.latest + (persist - 1) * m_step;
        for (std::size_t first = 0; first < persist; first += copiesPerFile)
            writeFile("Persist", first, std::min(first + copiesPerFile, persist), m_step, 0);
        // Those in Special stand a third of a copy later than every so-many-th one in Persist.
        if (special > 0)
            writeFile("Special", 0, special, m_step * (persist - 1) / special, m_step / 3);
        m_boot.syncs = hourlySyncs(m_boot, latest);
        save(m_target / "timesync" / logFileName(++m_boots, "timesync"), timeFileBytes({m_boot}));
        const std::uint64_t hour = ticks(m_boot, nanosecondsPerHour);
        m_boot.wallTime += nanoseconds(m_boot, latest) + nanosecondsPerHour / 6;
        ++m_boot.uuid.bytes[0];
        return 1 + latest / hour - (m_trace.earliest - 1) / hour;
    }

private:
    void writeFile(const char* folder,
                   std::size_t first,
                   std::size_t end,
                   std::uint64_t step,
                   std::uint64_t offset)
    {
        ByteBuilder out;
        appendHeader(out, m_trace, m_boot, m_trace.earliest + first * step + offset);
        for (std::size_t copy = first; copy < end; ++copy)
            appendCopy(out, m_trace, m_packing, copy * step + offset);
        save(m_target / folder / logFileName(++m_files, "tracev3"), out.view());
    }

    const Trace& m_trace;
    fs::path m_target;
    Packing m_packing;
    std::uint64_t m_step;
    Boot m_boot;
    std::size_t m_boots = 0;
    std::size_t m_files = 0;
};

/// Everything but trace and time files.
void copyStrings(const fs::path& source, const fs::path& target)
{
    for (const auto& entry : fs::directory_iterator(source)) {
        const auto name = entry.path().filename();
        if (entry.is_directory() && name != "Persist" && name != "Special" && name != "timesync")
            fs::copy(entry.path(), target / name, fs::copy_options::recursive);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const bool lzbitmap = argc == 5 && std::string(argv[4]) == "lzbitmap";
    if (argc != 4 && !lzbitmap)
        stop("usage: makearchive SOURCE.logarchive TARGET.logarchive MEGABYTES [lzbitmap]");
    const fs::path source = argv[1];
    const fs::path target = argv[2];
    if (fs::exists(target))
        stop("'" + target.string() + "' is there already");
    const Trace trace = readTrace(traceFileOf(source));
    for (const char* folder : {"Persist", "Special", "timesync"})
        fs::create_directories(target / folder);
    copyStrings(source, target);

    const std::size_t copies = std::strtoull(argv[3], nullptr, 10) * 1'000'000 / trace.fileSize + 1;
    const std::size_t copiesPerBoot = bytesPerBoot / trace.fileSize + 1;
    Multiplier multiplier(trace, target,
                          {lzbitmap ? Compression::Lzbitmap : Compression::Lz4, 0, {}});
    std::size_t boundaries = 0;
    for (std::size_t done = 0; done < copies; done += copiesPerBoot)
        boundaries += multiplier.writeBoot(std::min(copiesPerBoot, copies - done));
    std::printf("%zu copies of %zu entries and %zu boundaries: %zu entries\n", copies,
                trace.entries, boundaries, copies * trace.entries + boundaries);
    return 0;
}
