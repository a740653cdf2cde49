// SPDX-License-Identifier: MIT
#include "model/logger.h"
#include "support/fakeplatform.h"
#include "support/smallstore.h"

#include <benchmark/benchmark.h>
#include <limits>
#include <malloc.h>

/// A whole store through the reader alone, and through a fetch. The environment variable
/// TESSEL_BENCH_ARCHIVE names an archive to read instead of one written here.

namespace {

const FakePlatform& platformWithStore()
{
    static FakePlatform fake;
    if (fake.logStores.localPath)
        return fake;
    fake.logStores.localPath = qEnvironmentVariable("TESSEL_BENCH_ARCHIVE");
    if (!fake.logStores.localPath->isEmpty())
        return fake;
    constexpr int entries = 300'000;
    constexpr std::int64_t start = 1'709'816'700'000'000'000;
    SmallStore store(start);
    for (int i = 0; i < entries; ++i)
        store.log(start + i * 1'000'000LL,
                  "request " + std::to_string(i) + " was answered by the service");
    fake.logStores.localPath = fake.folder.filePath(QStringLiteral("bench.logarchive"));
    store.write(*fake.logStores.localPath);
    return fake;
}

/// What a conversion asks for, without the conversion.
void decode(benchmark::State& state)
{
    const auto store = OSLogStore::open(*platformWithStore().logStores.localPath);
    if (!store)
        return state.SkipWithError(store.error().description.c_str());
    std::int64_t count = 0;
    for (auto turn : state) {
        auto entries = store->getEntries({std::numeric_limits<std::int64_t>::min()});
        for (const logstore::Entry* entry = entries.next(); entry;
             entry = entries.next(), ++count) {
            benchmark::DoNotOptimize(entry->composedMessage().size() + entry->process().size()
                                     + entry->sender().size() + entry->subsystem().size()
                                     + entry->category().size());
        }
    }
    state.SetItemsProcessed(count);
}

void getLog(benchmark::State& state)
{
    const auto logger = Logger::make(platformWithStore().platform);
    const QDateTime longAgo(QDate(1980, 1, 1), QTime(), Qt::UTC);
    const QString noMaximum = QString::number(std::numeric_limits<qint64>::max());
    const auto allocated = [] {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    };
    const double before = allocated();
    for (auto turn : state) {
        if (!logger->getLog(longAgo, QString(), noMaximum, nullptr, true,
                            std::numeric_limits<double>::infinity()))
            return state.SkipWithError("the store cannot be read");
    }
    const auto length = static_cast<double>(logger->logList().size());
    state.SetItemsProcessed(logger->logList().size() * state.iterations());
    state.counters["entries"] = length;
    state.counters["bytes/entry"] = (allocated() - before) / length;
}

} // namespace

BENCHMARK(decode)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(getLog)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

BENCHMARK_MAIN();
