// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/chunk.h"
#include "platform/logstore/writer/record.h"

#include <cstdint>
#include <string>

namespace logstore::writer {

/// A message that stands in its chunk complete.
struct SimpleDump
{
    ProcessKey process{};
    std::uint8_t timeToLive = 0;
    std::uint8_t type = DefaultMessage;
    std::uint64_t time = 0;
    std::uint64_t thread = 0;
    std::uint64_t address = 0;
    Uuid sender{};
    Uuid sharedCache{};
    std::string subsystem{};
    std::string message{};
    Edit edit{}; ///< of the body
};

Bytes body(const SimpleDump& dump);

} // namespace logstore::writer
