// SPDX-License-Identifier: MIT
#include "tools/logstatistics.h"
#include "tools/statisticstext.h"

#include <benchmark/benchmark.h>

namespace {

constexpr qsizetype textSize = 200'000'000;

/// Records of rotated files in full, the costliest that a statistics file can hold, and others that
/// are passed over, in the proportion given in hundredths.
QByteArray statisticsText(int rotationsInHundred)
{
    QByteArray text;
    for (int number = 0; text.size() < textSize; ++number) {
        QByteArray record =
            rotationRecord(QByteArray::number(number) + ".tracev3", numberedRows(20));
        if (number % 100 >= rotationsInHundred)
            record.replace("File Rotate", "Memory Rollover");
        text += record;
    }
    return text;
}

void analyse(benchmark::State& state, LogStatistics::Form form)
{
    const QByteArray text = statisticsText(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto turn : state) {
        LogStatistics statistics(form);
        if (text.isValidUtf8())
            statistics.analyseText(text);
        benchmark::DoNotOptimize(statistics.fileNames().size());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * text.size());
}

} // namespace

BENCHMARK_CAPTURE(analyse, text, LogStatistics::Form::Text)
    ->ArgName("rotations%")
    ->Arg(10)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(analyse, csv, LogStatistics::Form::Csv)
    ->ArgName("rotations%")
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
