// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace predicate {

/// Gives the seconds by which the user's time zone is ahead of UTC at a local time, which is given
/// in seconds since 1970-01-01 00:00 local time.
using UtcOffset = std::function<std::int64_t(std::int64_t)>;

/// Reads `2024-03-07` or `2024-03-07 14:05`, with optional seconds, fraction and zone, as
/// nanoseconds since 1970 UTC. Without a zone it is in the user's time zone, which is UTC when the
/// function is empty. Dates out of range become the first or last date in range.
std::optional<std::int64_t> readDate(std::string_view text, const UtcOffset& utcOffset);

} // namespace predicate
