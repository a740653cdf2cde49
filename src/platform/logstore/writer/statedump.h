// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/chunk.h"
#include "platform/logstore/writer/record.h"

#include <cstdint>
#include <string>

namespace logstore::writer {

enum StateDataType : std::uint32_t { PropertyListData = 1, ProtocolBufferData = 2, CustomData = 3 };

/// What a program told of its state when it was asked.
struct StateDump
{
    ProcessKey process{};
    std::uint8_t timeToLive = 0;
    std::uint64_t time = 0;
    std::uint64_t activity = 0;
    Uuid sender{};
    std::uint32_t dataType = PropertyListData;
    std::string decoderLibrary{}; ///< of custom data
    std::string decoderType{};
    std::string title{};
    Bytes data{};
    Edit edit{}; ///< of the body
};

Bytes body(const StateDump& dump);

} // namespace logstore::writer
