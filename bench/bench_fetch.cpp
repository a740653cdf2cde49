// SPDX-License-Identifier: MIT
#include "model/logger.h"
#include "platform/predicatefilter.h"
#include "support/fakeplatform.h"
#include "support/smallstore.h"

#include <benchmark/benchmark.h>
#include <ctime>
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
    for ([[maybe_unused]] auto turn : state) {
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

/// The last fetch of everything, to hold those with a predicate against.
struct WholeFetch
{
    double seconds = 0; ///< of all threads' processor time
    qint64 entries = 0;
};
WholeFetch wholeFetch;

bool fetch(Logger& logger, std::shared_ptr<const logstore::EntryFilter> filter)
{
    const QDateTime longAgo(QDate(1980, 1, 1), QTime(), QTimeZone::utc());
    const QString noMaximum = QString::number(std::numeric_limits<qint64>::max());
    return bool(logger.getLog(longAgo, QString(), noMaximum, std::move(filter), true,
                              std::numeric_limits<double>::infinity()));
}

/// The processor time that each turn takes.
double timed(benchmark::State& state,
             Logger& logger,
             const std::shared_ptr<const logstore::EntryFilter>& filter)
{
    const std::clock_t begin = std::clock();
    for ([[maybe_unused]] auto turn : state) {
        if (!fetch(logger, filter)) {
            state.SkipWithError("the store cannot be read");
            break;
        }
    }
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC
           / static_cast<double>(state.iterations());
}

void getLog(benchmark::State& state)
{
    const auto logger = Logger::make(platformWithStore().platform);
    const auto allocated = [] {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    };
    const double before = allocated();
    const double seconds = timed(state, *logger, nullptr);
    wholeFetch = {seconds, logger->logList().size()};
    const auto length = static_cast<double>(wholeFetch.entries);
    state.SetItemsProcessed(wholeFetch.entries * state.iterations());
    state.counters["entries"] = length;
    state.counters["bytes/entry"] = (allocated() - before) / length;
}

const QString& benchArchive()
{
    return *platformWithStore().logStores.localPath;
}

void openArchive(benchmark::State& state)
{
    double bytes = 0;
    for ([[maybe_unused]] auto turn : state) {
        const auto store = logstore::Store::open(benchArchive().toStdString());
        if (!store)
            return state.SkipWithError(store.error().name.c_str());
        bytes = static_cast<double>(store->traceBytes());
    }
    state.counters["trace MB"] = bytes / 1e6;
}

/// Opening included, as each fetch does. The moments lie a tenth of the store's time apart.
void firstThousand(benchmark::State& state)
{
    const auto whole = logstore::Store::open(benchArchive().toStdString());
    if (!whole)
        return state.SkipWithError(whole.error().name.c_str());
    const std::int64_t begin = whole->entries().next()->time();
    const std::int64_t step = (whole->endTime() - begin) / 10;
    for ([[maybe_unused]] auto turn : state) {
        const auto store = logstore::Store::open(benchArchive().toStdString());
        auto entries = store->entries(begin + step * state.range(0));
        for (int i = 0; i < 1000; ++i)
            if (const logstore::Entry* entry = entries.next())
                benchmark::DoNotOptimize(entry->composedMessage().size());
    }
}

/// A fetch of the whole store with a predicate. All its entries count as read, those not returned
/// and those ruled out unread; `ratio` says how many times as fast as getLog's that was.
void getLogMatching(benchmark::State& state, const char* text)
{
    const auto built = predicate::build(text);
    if (!built)
        return state.SkipWithError(built.error().sentence.c_str());
    const auto logger = Logger::make(platformWithStore().platform);
    const double seconds = timed(state, *logger, std::make_shared<PredicateFilter>(*built));
    state.SetItemsProcessed(wholeFetch.entries * state.iterations());
    if (wholeFetch.entries > 0)
        state.counters["ratio"] = wholeFetch.seconds / seconds;
    state.counters["matching"] = static_cast<double>(logger->logList().size());
}

struct NamedPredicate
{
    const char* name;
    const char* text;
};

constexpr NamedPredicate predicates[] = {
    // A subsystem of the demonstration store, and one of archives made from real ones.
    {"few", "subsystem IN {'com.apple.TimeMachine', 'com.apple.amp.itunescloudd'}"},
    {"message", "eventMessage CONTAINS[c] 'error'"},
    {"timeMachineFull",
     "subsystem == 'com.apple.TimeMachine' || eventMessage CONTAINS[c] 'backup' || "
     "eventMessage CONTAINS[c] 'Time Machine' || eventMessage CONTAINS[c] 'TimeMachine'"},
    {"nothing", "eventMessage CONTAINS[c] 'no message says this'"},
    {"contains", "eventMessage CONTAINS 'error'"},
    {"matchesPlain", "eventMessage MATCHES '.*error.*'"},
    {"matchesPlainCaseless", "eventMessage MATCHES[c] '.*error.*'"},
    {"matchesPlainFolded", "eventMessage MATCHES[cd] '.*error.*'"},
    {"matchesAlternatives", "eventMessage MATCHES '.*(error|fault|denied).*'"},
    {"matchesRequired", "eventMessage MATCHES '.*error.*[0-9]+.*'"},
    {"matchesRequiredCaseless", "eventMessage MATCHES[c] '.*[a-z]+ error.*[0-9]+.*'"},
    {"matchesCommon", "eventMessage MATCHES '.*the .*[0-9]+.*'"},
    {"matchesAnything", "eventMessage MATCHES '.*[0-9]{4}.*'"},
    {"matchesNames", "process MATCHES '^(kernel|backupd|mds|mds_stores)$'"},
};

} // namespace

BENCHMARK(decode)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(getLog)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

BENCHMARK(openArchive)->Unit(benchmark::kMillisecond);
BENCHMARK(firstThousand)->DenseRange(0, 9, 3)->Unit(benchmark::kMillisecond);

int main(int count, char** arguments)
{
    for (const NamedPredicate& predicate : predicates) {
        const std::string name = std::string("getLogMatching/") + predicate.name;
        benchmark::RegisterBenchmark(name.c_str(), getLogMatching, predicate.text)
            ->Unit(benchmark::kMillisecond)
            ->MeasureProcessCPUTime();
    }
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
