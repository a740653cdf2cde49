// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

constexpr std::int64_t nanosecondsPerMicrosecond = 1'000;
constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
