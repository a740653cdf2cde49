// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/chunk.h"
#include "platform/logstore/writer/record.h"

#include <cstdint>
#include <vector>

namespace logstore::writer {

/// The items of a record that are too large for its page.
struct Oversize
{
    ProcessKey process{};
    std::uint8_t timeToLive = 0;
    std::uint64_t time = 0; ///< that of the record
    std::uint32_t reference = 0;
    std::vector<Item> items{};
    Backtrace backtrace{};
    Edit edit{}; ///< of the body
};

Bytes body(const Oversize& oversize);

} // namespace logstore::writer
