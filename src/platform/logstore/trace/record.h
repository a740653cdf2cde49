// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/uuid.h"

#include <optional>

namespace logstore {

enum class RecordKind : std::uint8_t { Activity = 2, Trace = 3, Log = 4, Signpost = 6, Loss = 7 };

enum RecordFlag : std::uint16_t {
    HasCurrentActivity = 0x0001,
    StringSourceMask = 0x000e,
    HasUniqueProcess = 0x0010,
    HasLargeOffset = 0x0020,
    HasPersona = 0x0040,
    HasPrivateRange = 0x0100,
    HasOtherActivityOrSubsystem = 0x0200,
    HasRules = 0x0400,
    HasOversize = 0x0800,
    HasName = 0x8000
};

/// Where the format string of a record stands.
enum class StringSource : std::uint8_t {
    MainExecutable = 2,
    SharedCache = 4,
    Absolute = 8,
    Relative = 0xa,
    LargeSharedCache = 0xc
};

constexpr std::uint8_t userActionType = 3;

// offset  size  field
//      0     1  kind; 0 ends the used part of a chunk
//      1     1  type
//      2     2  flags
//      4     4  format string reference
//      8     8  thread
//     16  4, 2  time delta, low and high bits
//     22     2  size of the data that follows
struct RecordHead
{
    static constexpr std::size_t size = 24;

    RecordKind kind;
    std::uint8_t type;
    std::uint16_t flags;
    std::uint32_t reference;
    std::uint64_t thread;
    std::uint64_t timeDelta;
    std::uint16_t dataSize;

    static RecordHead read(Bytes bytes)
    {
        return {static_cast<RecordKind>(loadAt<std::uint8_t>(bytes)),
                loadAt<std::uint8_t>(bytes, 1),
                loadAt<std::uint16_t>(bytes, 2),
                loadAt<std::uint32_t>(bytes, 4),
                loadAt<std::uint64_t>(bytes, 8),
                loadAt<std::uint32_t>(bytes, 16)
                    | std::uint64_t{loadAt<std::uint16_t>(bytes, 20)} << 32,
                loadAt<std::uint16_t>(bytes, 22)};
    }

    StringSource source() const { return static_cast<StringSource>(flags & StringSourceMask); }

    /// False for kinds that no entry is made of.
    bool isKnown() const
    {
        return (kind >= RecordKind::Activity && kind <= RecordKind::Log)
               || kind == RecordKind::Signpost || kind == RecordKind::Loss;
    }
};

/// The fields in front of a record's items. Those the record does not carry are 0 or absent.
struct RecordFields
{
    std::uint64_t currentActivity = 0;
    std::uint64_t uniqueProcess = 0;
    std::uint64_t otherActivity = 0;
    std::uint64_t newActivity = 0;
    std::uint64_t signpostIdentifier = 0;
    Uuid image;
    std::uint32_t addressLow = 0;
    std::uint32_t oversizeReference = 0;
    std::uint32_t nameReference = 0;
    std::uint16_t privateOffset = 0;
    std::uint16_t privateSize = 0;
    std::uint16_t largeOffset = 0;
    std::uint16_t addressHigh = 0;
    std::uint16_t largeSharedCache = 0;
    std::optional<std::uint16_t> subsystem;
    std::uint16_t nameUpper = 0;
    std::uint8_t timeToLive = 0;
    Bytes items; ///< what follows the fields

    /// Absent when the data ends inside a field. Not for loss records, which have none of these.
    /// Records with a persona may hold its identifier or not: the form is taken that fits the data
    /// better, and when both do as well, the one without it if the process has a persona.
    static std::optional<RecordFields>
    read(const RecordHead& head, Bytes data, bool processHasPersona);
};

/// Activity identifiers carry a marker in the top bit.
inline std::uint64_t withoutMarker(std::uint64_t activity)
{
    return activity & 0x7fffffffffffffffULL;
}

} // namespace logstore
