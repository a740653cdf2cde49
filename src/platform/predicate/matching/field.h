// SPDX-License-Identifier: MIT
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>

namespace predicate {

/// The fields of an entry, under their canonical names.
enum class Field : std::uint8_t {
    ComposedMessage,
    Date,
    Process,
    ProcessIdentifier,
    ProcessImagePath,
    ProcessImageUuid,
    Sender,
    SenderImagePath,
    SenderImageUuid,
    SenderImageOffset,
    Subsystem,
    Category,
    LogType,
    Level,
    Type,
    ActivityIdentifier,
    ParentActivityIdentifier,
    CreatorActivityIdentifier,
    TransitionActivityIdentifier,
    CreatorProcessUniqueIdentifier,
    ThreadIdentifier,
    UserIdentifier,
    TraceIdentifier,
    MachContinuousTimestamp,
    ContinuousNanosecondsSinceBoot,
    BootUuid,
    TimeToLive,
    FormatString,
    Size,
    StoreCategory,
    SignpostIdentifier,
    SignpostName,
    SignpostType,
    SignpostScope
};

constexpr std::size_t fieldCount = static_cast<std::size_t>(Field::SignpostScope) + 1;

using Fields = std::bitset<fieldCount>;

enum class EntryKind : std::uint8_t {
    Log = 1,
    Activity = 2,
    Boundary = 4,
    Signpost = 8,
    Other = 16
};

} // namespace predicate
