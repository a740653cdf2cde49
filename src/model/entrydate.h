// SPDX-License-Identifier: MIT
#pragma once

#include "model/text.h"

#include <QDateTime>
#include <QTimeZone>

#include <array>
#include <optional>

/// Writes points in time in the form of entry dates: 2024-03-07 14:05:09.031250+0100. The clock
/// time follows the zone's rules at that moment; the suffix is the same for all. Asks the zone once
/// for all times between two of its changes: entries come by the million, and a QDateTime for each
/// would cost more than reading it.
class EntryDateWriter
{
public:
    EntryDateWriter(const QTimeZone& zone, const QString& suffix);

    /// `time` counts nanoseconds since 1970-01-01 UTC.
    Text operator()(std::int64_t time);

private:
    static constexpr std::size_t clockTimeLength = 19; ///< yyyy-MM-dd HH:mm:ss
    static constexpr std::size_t fractionLength = 7;   ///< .SSSSSS

    void writeClockTime(std::int64_t second);
    void lookUpOffset(std::int64_t second);

    QTimeZone m_zone;
    /// The whole text; clock time, fraction and suffix in their places.
    std::array<char, clockTimeLength + fractionLength + 8> m_text{};
    std::size_t m_length;
    std::optional<std::int64_t> m_writtenSecond; ///< the one whose clock time stands in m_text
    std::int64_t m_offset = 0;                   ///< seconds to add, valid in [m_from, m_until)
    std::int64_t m_from = 0;
    std::int64_t m_until = 0;
};

/// The offset of a zone as entry dates carry it: +0100.
QString zoneSuffix(int offsetFromUtc);

/// Reads an entry date with its zone. The microseconds are cut to milliseconds.
std::optional<QDateTime> readEntryDate(const Text& date);
