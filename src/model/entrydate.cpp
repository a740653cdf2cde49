// SPDX-License-Identifier: MIT
#include "model/entrydate.h"

#include "platform/base/timeunits.h"

#include <algorithm>
#include <charconv>

EntryDateWriter::EntryDateWriter(const QTimeZone& zone, const QString& suffix) : m_clockTime(zone)
{
    const std::string form = "0000-00-00 00:00:00.000000";
    const std::string tail = suffix.toStdString();
    std::copy(form.begin(), form.end(), m_text.begin());
    const std::size_t room = std::min(tail.size(), m_text.size() - form.size());
    std::copy_n(tail.begin(), room, m_text.begin() + form.size());
    m_length = form.size() + room;
}

Text EntryDateWriter::operator()(std::int64_t time)
{
    const bool isBelow = time % nanosecondsPerSecond < 0; // division rounds towards 1970
    const std::int64_t second = time / nanosecondsPerSecond - (isBelow ? 1 : 0);
    const std::int64_t nanosecond =
        time % nanosecondsPerSecond + (isBelow ? nanosecondsPerSecond : 0);
    if (second != m_writtenSecond)
        m_clockTime(second, m_text.data());
    m_writtenSecond = second;
    writeDigits(&m_text[ClockTimeWriter::length + 1], fractionLength - 1, nanosecond / 1000);
    return Text(std::string_view(m_text.data(), m_length));
}

std::optional<QDateTime> readEntryDate(const Text& date)
{
    // A digit stands for a digit in this form, "z" for the sign of the zone.
    constexpr std::string_view form = "0000-00-00 00:00:00.000000z0000";
    const std::string_view text = date.utf8();
    const auto fits = [](char c, char wanted) {
        if (wanted == '0')
            return c >= '0' && c <= '9';
        return wanted == 'z' ? c == '+' || c == '-' : c == wanted;
    };
    if (!std::equal(text.begin(), text.end(), form.begin(), form.end(), fits))
        return std::nullopt;
    const auto number = [text](std::size_t at, std::size_t length) {
        int value = 0;
        std::from_chars(text.data() + at, text.data() + at + length, value);
        return value;
    };
    const QDate day(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2), number(20, 3));
    const int zoneHours = number(27, 2);
    const int zoneMinutes = number(29, 2);
    if (!day.isValid() || !time.isValid() || zoneHours > 23 || zoneMinutes > 59)
        return std::nullopt;
    const int offset = (zoneHours * 60 + zoneMinutes) * 60 * (text[26] == '-' ? -1 : 1);
    return QDateTime(day, time, QTimeZone::utc()).addSecs(-offset);
}
