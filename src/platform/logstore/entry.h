// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/uuid.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace logstore {

/// The class of an entry; the values are the kind codes of entry lists.
enum class EntryKind : std::uint8_t {
    Log = 1,
    Activity = 2,
    Boundary = 3,
    Signpost = 4,
    Other = 10
};

/// The kind of record an entry was made from.
enum class EventType : std::uint8_t {
    Log,
    Trace,
    SimpleDump,
    ActivityCreate,
    UserAction,
    Signpost,
    TimeSync,
    Loss,
    StateDump
};

/// Raw values of a log message's level.
enum class Level : std::uint8_t { Undefined, Debug, Info, Notice, Error, Fault };

enum class SignpostType : std::uint8_t { Undefined, IntervalBegin, IntervalEnd, Event };
enum class SignpostScope : std::uint8_t { Unknown, Thread, Process, System };

/// Raw values of an entry's store category; the day counts are times to live.
enum class StoreCategory : std::uint8_t {
    Undefined,
    Metadata,
    ShortTerm,
    LongTermAuto,
    LongTerm1,
    LongTerm3,
    LongTerm7,
    LongTerm14,
    LongTerm30
};

class EntryResolver;
struct RecordState;

/// One entry of a store, read from its record as fields are asked for. Valid until the stream that
/// gave it moves on. Texts are valid UTF-8. Those of process(), processImagePath(), sender(),
/// senderImagePath(), subsystem(), category() and signpostName() live as long as the store, and no
/// address ever gets another text. Fields that do not apply to the kind are empty, 0 or absent.
class Entry
{
public:
    Entry(EntryResolver& resolver, RecordState& state) : m_resolver(resolver), m_state(state) {}

    // Known without any lookup.
    EntryKind kind() const;
    EventType event() const;
    std::int64_t time() const;                  ///< wall time, nanoseconds since 1970-01-01 UTC
    std::uint64_t continuousTime() const;       ///< ticks since boot
    std::uint64_t nanosecondsSinceBoot() const; ///< the same in nanoseconds
    const Uuid& bootUuid() const;
    std::uint64_t threadIdentifier() const;
    std::uint8_t
    recordType() const;  ///< the raw type byte: 0 default, 1 info, 2 debug, 16 error, 17 fault
    Level level() const; ///< of log messages
    StoreCategory storeCategory() const;
    std::uint8_t timeToLive() const;  ///< days, 0 = none
    std::uint32_t recordSize() const; ///< bytes of the record's data

    // Known from the process's catalog entry.
    bool hasProcess() const;
    std::string_view process() const;
    std::string_view processImagePath() const;
    Uuid processImageUuid() const;
    std::int32_t processIdentifier() const;
    std::uint32_t userIdentifier() const;
    std::string_view subsystem() const;
    std::string_view category() const;

    // Known from the record's fields.
    std::uint64_t activityIdentifier() const;
    std::uint64_t parentActivityIdentifier() const;
    std::uint64_t creatorActivityIdentifier() const; ///< of activities: the one it was made under
    std::uint64_t creatorProcessUniqueIdentifier() const; ///< of activities
    std::uint64_t signpostIdentifier() const;
    SignpostType signpostType() const;
    SignpostScope signpostScope() const;
    std::uint32_t traceIdentifier() const; ///< the record's format string reference

    // Need the string files.
    std::string_view sender() const;
    std::string_view senderImagePath() const;
    Uuid senderImageUuid() const;
    std::optional<std::uint64_t> senderImageOffset() const;
    std::string_view formatString() const;
    std::string_view signpostName() const;

    // Needs everything: the format string and all arguments.
    std::string_view composedMessage() const;

private:
    EntryResolver& m_resolver;
    RecordState& m_state;
};

} // namespace logstore
