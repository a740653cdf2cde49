// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace predicate {

/// The seconds by which the user's clock is ahead of UTC when it shows a time, which is given as
/// seconds from 1970-01-01 00:00 on that clock.
using UtcOffset = std::function<std::int64_t(std::int64_t)>;

/// `2024-03-07`, `2024-03-07 14:05`, with seconds, a fraction and a zone if wanted, as nanoseconds
/// since 1970 UTC. Without a zone it is the user's time; an empty function stands for UTC.
/// Dates beyond what the count can hold are its ends.
std::optional<std::int64_t> readDate(std::string_view text, const UtcOffset& utcOffset);

} // namespace predicate
