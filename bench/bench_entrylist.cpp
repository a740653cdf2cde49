// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"
#include "model/entryrichtext.h"
#include "support/sampleentries.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <malloc.h>

/// What a list costs in memory, and how fast it goes to files and back.

namespace {

constexpr int listLength = 1'000'000;
constexpr double megabyte = 1e6;

/// Bytes that are allocated now, with what the allocator adds to each piece.
double allocatedBytes()
{
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// The most memory that was resident since the last call of forgetPeak(), in bytes.
double peakBytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const qsizetype start = text.indexOf("VmHWM:") + 6;
    return text.mid(start, text.indexOf("kB", start) - start).trimmed().toDouble() * 1024;
}

void forgetPeak()
{
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

/// Sets the counters of a run that wrote or read the file at `path` once per turn.
void countFile(benchmark::State& state, const QString& path)
{
    const auto bytes = static_cast<double>(QFileInfo(path).size());
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
    state.SetItemsProcessed(listLength * state.iterations());
    state.counters["file MB"] = bytes / megabyte;
}

void memoryOfAList(benchmark::State& state)
{
    double bytes = 0;
    for ([[maybe_unused]] auto turn : state) {
        const double before = allocatedBytes();
        const QList<LogEntry> entries = manyEntries(listLength);
        bytes = allocatedBytes() - before;
    }
    state.counters["sizeof"] = sizeof(LogEntry);
    state.counters["bytes/entry"] = bytes / listLength;
}

void save(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.tessel"));
    const QList<LogEntry> entries = manyEntries(listLength);
    forgetPeak();
    const double before = peakBytes();
    for ([[maybe_unused]] auto turn : state) {
        if (!saveEntryList(entries, path))
            state.SkipWithError("the list cannot be saved");
    }
    state.counters["MB beyond the list"] = (peakBytes() - before) / megabyte;
    countFile(state, path);
}

void load(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.tessel"));
    if (!saveEntryList(manyEntries(listLength), path))
        state.SkipWithError("the list cannot be saved");
    forgetPeak();
    const double before = peakBytes();
    double listBytes = 1;
    for ([[maybe_unused]] auto turn : state) {
        const double allocated = allocatedBytes();
        const auto entries = loadEntryList(path);
        if (!entries)
            state.SkipWithError("the list cannot be read");
        listBytes = allocatedBytes() - allocated;
    }
    state.counters["peak/list"] = (peakBytes() - before) / listBytes;
    countFile(state, path);
}

void richText(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("list.rtf"));
    const QList<LogEntry> entries = manyEntries(listLength / 10);
    for ([[maybe_unused]] auto turn : state) {
        if (!saveRichText(entries, path))
            state.SkipWithError("the rich text cannot be saved");
    }
    state.SetItemsProcessed(entries.size() * state.iterations());
}

} // namespace

BENCHMARK(memoryOfAList)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(save)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(load)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(richText)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

BENCHMARK_MAIN();
