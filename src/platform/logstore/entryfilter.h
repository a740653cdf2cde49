// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/uuid.h"

#include <cstdint>
#include <string_view>

namespace logstore {

class Entry;

/// What is known of a process before its records are read.
struct ProcessFacts
{
    std::string_view process;
    std::string_view processImagePath;
    Uuid processImageUuid;
    std::int32_t processIdentifier = 0;
    std::uint32_t userIdentifier = 0;
};

/// Decides which entries a stream delivers. Processes and subsystems are ruled out by the catalog,
/// before records are read. Senders are not, as a record may name its image itself.
class EntryFilter
{
public:
    virtual ~EntryFilter() = default;

    virtual bool matches(const Entry& entry) const = 0;

    /// False only when no entry of the process can match, whatever its other fields.
    virtual bool mayMatch(const ProcessFacts&) const { return true; }

    /// False only when no entry of the process with this subsystem and category can match.
    /// Both are empty for entries that carry none.
    virtual bool mayMatch(const ProcessFacts&,
                          std::string_view /*subsystem*/,
                          std::string_view /*category*/) const
    {
        return true;
    }

    /// Whether some answers are guesses, as finding out would have taken too long.
    virtual bool gaveUp() const { return false; }

    /// Called before each chunk set is opened, with the earliest time it may hold (nanoseconds
    /// since 1970). Returning false ends the stream, so that a walk that finds nothing can be
    /// cancelled.
    virtual bool goesOn(std::int64_t /*reached*/) const { return true; }
};

} // namespace logstore
