// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTimeZone>

#include <cstdint>

/// Writes points in time as a clock in a zone shows them: 2024-03-07 14:05:09. Asks the zone once
/// for all times between two of its changes: times come by the million, and a QDateTime for each
/// would cost more than all else.
class ClockTimeWriter
{
public:
    static constexpr std::size_t length = 19;

    explicit ClockTimeWriter(const QTimeZone& zone) : m_zone(zone) {}

    /// Writes the time of that second since 1970-01-01 UTC, a year of four digits, over `length`
    /// characters. Returns the zone's offset at that moment, in seconds.
    int operator()(std::int64_t second, char* at);

private:
    void lookUpOffset(std::int64_t second);

    QTimeZone m_zone;
    int m_offset = 0;        ///< valid in [m_from, m_until)
    std::int64_t m_from = 0; ///< until the first look-up there is no such time
    std::int64_t m_until = 0;
};

/// The offset of a zone as dates carry it: +0100.
QString zoneSuffix(int offsetFromUtc);

/// Writes the number's last digits, over `count` characters.
void writeDigits(char* at, std::size_t count, std::int64_t number);
