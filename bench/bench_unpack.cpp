// SPDX-License-Identifier: MIT
#include "platform/demonstrationstore.h"
#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/trace/unpack.h"
#include "platform/logstore/writer/chunk.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

/// Unpacking chunk sets, by compression: those of the demonstration store, or of the archive that
/// the environment variable TESSEL_BENCH_ARCHIVE names.

namespace {

namespace fs = std::filesystem;
using logstore::ChunkHead;
using logstore::writer::Bytes;
using logstore::writer::Packing;

void addContents(std::vector<Bytes>& contents, const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    const Bytes file{std::istreambuf_iterator<char>(in), {}};
    for (std::size_t at = 0; at + ChunkHead::size <= file.size();) {
        const ChunkHead head = ChunkHead::read(logstore::Bytes(file).subspan(at));
        const auto body = logstore::clipped(file, at + ChunkHead::size, head.bodySize);
        Bytes content;
        if (head.tag == logstore::ChunkTag::ChunkSet)
            logstore::unpackChunkSet(body, content);
        if (!content.empty())
            contents.push_back(std::move(content));
        at += ChunkHead::size + body.size() + ChunkHead::padding(body.size());
    }
}

const std::vector<Bytes>& contents()
{
    static std::vector<Bytes> found;
    if (!found.empty())
        return found;
    const char* const named = std::getenv("TESSEL_BENCH_ARCHIVE");
    const fs::path made =
        fs::temp_directory_path() / ("tessel-bench-" + std::to_string(::getpid()));
    if (!named && !DemonstrationStore(made).writeUntil(1'764'000'000'000'000'000))
        std::abort();
    for (const auto& item : fs::recursive_directory_iterator(named ? fs::path(named) : made))
        if (item.path().extension() == ".tracev3")
            addContents(found, item.path());
    fs::remove_all(made);
    return found;
}

void unpack(benchmark::State& state, Packing packing)
{
    std::vector<Bytes> bodies;
    std::size_t packedSize = 0;
    std::size_t size = 0;
    for (const Bytes& content : contents()) {
        bodies.push_back(chunkSetBody(content, packing));
        packedSize += bodies.back().size();
        size += content.size();
    }
    Bytes out;
    for ([[maybe_unused]] auto turn : state)
        for (const Bytes& body : bodies)
            benchmark::DoNotOptimize(logstore::unpackChunkSet(body, out));
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
    state.counters["packed"] = static_cast<double>(packedSize) / static_cast<double>(size);
}

using logstore::writer::Compression;

} // namespace

BENCHMARK_CAPTURE(unpack, lz4, Packing{});
BENCHMARK_CAPTURE(unpack, lzbitmap16, Packing{Compression::Lzbitmap, 0, {false, false}});
BENCHMARK_CAPTURE(unpack, lzbitmap32, Packing{Compression::Lzbitmap, 0, {true, true}});

BENCHMARK_MAIN();
