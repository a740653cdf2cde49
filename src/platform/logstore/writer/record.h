// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/record.h"
#include "platform/logstore/writer/items.h"
#include "platform/logstore/writer/stringreference.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace logstore::writer {

/// Set in every activity identifier that is stored.
constexpr std::uint64_t activityMarker = 0x8000000000000000;

/// Changes bytes that were built in good order: how tests make damage.
using Edit = std::function<void(Bytes&)>;

using logstore::RecordKind;

/// Types of log messages, traces and simple dumps.
enum MessageType : std::uint8_t {
    DefaultMessage = 0,
    InfoMessage = 1,
    DebugMessage = 2,
    ErrorMessage = 0x10,
    FaultMessage = 0x11
};

enum ActivityType : std::uint8_t { CreateActivity = 1, UserAction = 3 };

/// Types of signposts: one of each half, joined by |.
enum SignpostHalf : std::uint8_t {
    SignpostEvent = 0,
    IntervalBegin = 1,
    IntervalEnd = 2,
    ThreadScope = 0x40,
    ProcessScope = 0x80,
    SystemScope = 0xc0
};

/// What a loss record tells of.
struct LostRecords
{
    std::uint64_t first = 0; ///< continuous time
    std::uint64_t last = 0;
    std::uint64_t count = 0;
};

/// One record of a firehose chunk. Fields that its kind does not have are ignored; flags follow
/// from what is set.
struct Record
{
    RecordKind kind = RecordKind::Log;
    std::uint8_t type = DefaultMessage;
    std::uint64_t time = 0; ///< continuous time
    std::uint64_t thread = 0;
    StringReference format{};
    std::vector<Item> items{};
    std::optional<std::uint16_t> subsystem{}; ///< as the process numbers it
    std::uint8_t timeToLive = 0;              ///< days, 0 = that of the chunk
    std::uint64_t activity = 0;               ///< the current one, 0 = none
    std::uint64_t newActivity = 0;            ///< of created activities
    std::uint64_t parentActivity = 0;         ///< of activities, 0 = none
    std::uint64_t creator = 0;                ///< of activities: the unique process id, 0 = none
    std::uint64_t signpost = 0;
    std::optional<NameReference> name{}; ///< of signposts
    LostRecords lost{};
    std::optional<std::uint32_t>
        oversize{}; ///< the items stand in the oversize chunk of this number
    Backtrace backtrace{};
    /// All but traces and losses may name a persona, whose identifier stands in the record or not.
    std::optional<std::uint32_t> persona{};
    bool holdsPersona = true;
    Edit edit{}; ///< of head and data together
};

/// A record as it stands in its chunk, but for the place of its private data.
struct RecordBytes
{
    Bytes bytes{}; ///< head and data, without padding
    Bytes privateData{};
    std::size_t privateOffsetAt = 0; ///< where the virtual offset goes, 0 = nowhere
};

RecordBytes recordBytes(const Record& record, std::uint64_t baseTime);

} // namespace logstore::writer
