// SPDX-License-Identifier: MIT
#pragma once

#include "model/text.h"
#include "platform/clocktime.h"

#include <QDateTime>

#include <array>
#include <optional>

/// Writes points in time in the form of entry dates: 2024-03-07 14:05:09.031250+0100. The clock
/// time follows the zone's rules at that moment; the suffix is the same for all.
class EntryDateWriter
{
public:
    EntryDateWriter(const QTimeZone& zone, const QString& suffix);

    /// `time` counts nanoseconds since 1970-01-01 UTC.
    Text operator()(std::int64_t time);

private:
    static constexpr std::size_t fractionLength = 7; ///< .SSSSSS

    ClockTimeWriter m_clockTime;
    /// The whole text; clock time, fraction and suffix in their places.
    std::array<char, ClockTimeWriter::length + fractionLength + 8> m_text{};
    std::size_t m_length;
    std::optional<std::int64_t> m_writtenSecond; ///< the one whose clock time stands in m_text
};

/// Reads an entry date with its zone. The microseconds are cut to milliseconds.
std::optional<QDateTime> readEntryDate(const Text& date);
