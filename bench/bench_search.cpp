// SPDX-License-Identifier: MIT
#include "mainwindow/textsearch.h"

#include <benchmark/benchmark.h>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 1'000'000;
constexpr qsizetype messageLength = 100;

/// Messages of words that a log is made of, with a number each, so that no two are alike.
QString message(std::uint32_t number)
{
    static const QStringList words = {
        u"connection"_s, u"to"_s,     u"service"_s, u"invalidated"_s, u"request"_s,
        u"completed"_s,  u"with"_s,   u"state"_s,   u"transition"_s,  u"for"_s,
        u"client"_s,     u"Looked"_s, u"up"_s,      u"process"_s,     u"queue"_s};
    QString text = QString::number(number);
    std::uint32_t random = number * 2654435761U;
    while (text.size() < messageLength) {
        random = random * 1664525U + 1013904223U;
        text += u' ' + words.at((random >> 16) % words.size());
    }
    text.truncate(messageLength);
    return text;
}

QList<LogEntry> makeEntries(const QString& tail)
{
    QList<LogEntry> entries(entryCount);
    std::uint32_t number = 0;
    for (LogEntry& entry : entries)
        entry.composedMessage = message(++number) + tail;
    return entries;
}

void search(benchmark::State& state, const QList<LogEntry>& entries, const QString& query)
{
    qsizetype found = 0;
    for ([[maybe_unused]] auto turn : state)
        found = entriesFound(entries, 0, query).size();
    state.counters["found"] = static_cast<double>(found);
    state.SetItemsProcessed(state.iterations() * entries.size());
}

const QList<LogEntry>& plainEntries()
{
    static const QList<LogEntry> entries = makeEntries({});
    return entries;
}

const QList<LogEntry>& accentedEntries()
{
    static const QList<LogEntry> entries = makeEntries(u" für Jürgen"_s);
    return entries;
}

void nothingFound(benchmark::State& state)
{
    search(state, plainEntries(), u"error"_s);
}
void fewFound(benchmark::State& state)
{
    search(state, plainEntries(), u"99999"_s);
}
void manyFound(benchmark::State& state)
{
    search(state, plainEntries(), u"Invalidated"_s);
}
void twinLetter(benchmark::State& state)
{
    search(state, accentedEntries(), u"kernel"_s);
}
void accentedQuery(benchmark::State& state)
{
    search(state, accentedEntries(), u"möglich"_s);
}
void accentedQueryInPlainTexts(benchmark::State& state)
{
    search(state, plainEntries(), u"möglich"_s);
}

} // namespace

BENCHMARK(nothingFound)->Unit(benchmark::kMillisecond);
BENCHMARK(fewFound)->Unit(benchmark::kMillisecond);
BENCHMARK(manyFound)->Unit(benchmark::kMillisecond);
BENCHMARK(twinLetter)->Unit(benchmark::kMillisecond);
BENCHMARK(accentedQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(accentedQueryInPlainTexts)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
