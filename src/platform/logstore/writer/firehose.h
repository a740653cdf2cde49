// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/chunk.h"
#include "platform/logstore/writer/record.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace logstore::writer {

enum Stream : std::uint8_t {
    PersistentStream = 0,
    SpecialStream = 1,
    MemoryStream = 2,
    SignpostStream = 4
};

/// A page of records of one process.
struct Firehose
{
    ProcessKey process{};
    std::uint8_t timeToLive = 0;
    bool collapsed = true; ///< without the unused room between public and private data
    std::uint8_t stream = PersistentStream;
    std::optional<std::uint64_t> baseTime{}; ///< the earliest record's, when absent
    std::vector<Record> records{};
    Edit edit{}; ///< of the body
};

/// Public and private data share so many bytes.
constexpr std::size_t firehosePageSize = 0x1000;

/// What a record takes of a page.
struct RecordRoom
{
    std::size_t publicSize = 0;
    std::size_t privateSize = 0;
};
RecordRoom roomOf(const Record& record);

Bytes body(const Firehose& firehose);

} // namespace logstore::writer
