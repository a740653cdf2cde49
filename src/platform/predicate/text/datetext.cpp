// SPDX-License-Identifier: MIT
#include "platform/predicate/text/datetext.h"

#include "platform/base/ascii.h"
#include "platform/base/timeunits.h"

#include <array>
#include <limits>

namespace predicate {

namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// Reads the parts of a date text, with a failure that sticks.
class DateReader
{
public:
    explicit DateReader(std::string_view text) : m_rest(text) {}

    bool ok() const { return m_ok; }
    bool atEnd() const { return m_rest.empty(); }
    bool at(std::string_view characters) const
    {
        return !m_rest.empty() && characters.find(m_rest.front()) != std::string_view::npos;
    }
    char take()
    {
        if (m_rest.empty())
            return fail();
        const char c = m_rest.front();
        m_rest.remove_prefix(1);
        return c;
    }
    void skip(char wanted) { m_ok = take() == wanted && m_ok; }

    /// A number of exactly so many digits, in the range.
    std::int64_t number(std::size_t digits, std::int64_t lowest, std::int64_t highest)
    {
        std::int64_t value = 0;
        for (std::size_t i = 0; i < digits; ++i)
            value = value * 10 + digit();
        m_ok = m_ok && value >= lowest && value <= highest;
        return value;
    }

    std::int64_t fraction()
    {
        std::int64_t value = 0;
        std::int64_t unit = nanosecondsPerSecond / 10;
        do {
            value += digit() * unit;
            m_ok = m_ok && unit > 0;
            unit /= 10;
        } while (at("0123456789"));
        return value;
    }

private:
    char fail()
    {
        m_ok = false;
        return '\0';
    }
    std::int64_t digit()
    {
        const char c = take();
        m_ok = m_ok && isAsciiDigit(static_cast<unsigned char>(c));
        return m_ok ? c - '0' : 0;
    }

    std::string_view m_rest;
    bool m_ok = true;
};

bool isLeapYear(std::int64_t year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

std::int64_t daysInMonth(std::int64_t year, std::int64_t month)
{
    constexpr std::array<std::int64_t, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : days[static_cast<std::size_t>(month - 1)];
}

/// Days from 1970-01-01 in the Gregorian calendar.
std::int64_t dayNumber(std::int64_t year, std::int64_t month, std::int64_t day)
{
    // Years that begin in March put the leap day at their end.
    const std::int64_t shifted = month <= 2 ? year - 1 : year;
    const std::int64_t era = (shifted >= 0 ? shifted : shifted - 399) / 400;
    const std::int64_t yearOfEra = shifted - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

std::int64_t readDay(DateReader& in)
{
    const std::int64_t year = in.number(4, 0, 9999);
    in.skip('-');
    const std::int64_t month = in.number(2, 1, 12);
    in.skip('-');
    const std::int64_t day = in.number(2, 1, in.ok() ? daysInMonth(year, month) : 31);
    return in.ok() ? dayNumber(year, month, day) : 0;
}

/// Seconds ahead of UTC, if a zone is written.
std::optional<std::int64_t> readZone(DateReader& in)
{
    if (in.atEnd())
        return std::nullopt;
    if (in.at(" "))
        in.skip(' ');
    if (in.at("Z")) {
        in.skip('Z');
        return 0;
    }
    const std::int64_t direction = in.at("-") ? -1 : 1;
    in.skip(direction < 0 ? '-' : '+');
    const std::int64_t hours = in.number(2, 0, 23);
    if (in.at(":"))
        in.skip(':');
    return direction * (hours * 60 + in.number(2, 0, 59)) * 60;
}

std::int64_t inNanoseconds(std::int64_t seconds, std::int64_t fraction)
{
    constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    if (seconds >= highest / nanosecondsPerSecond)
        return highest;
    if (seconds <= lowest / nanosecondsPerSecond)
        return lowest;
    return seconds * nanosecondsPerSecond + fraction;
}

} // namespace

std::optional<std::int64_t> readDate(std::string_view text, const UtcOffset& utcOffset)
{
    DateReader in(text);
    std::int64_t seconds = readDay(in) * secondsPerDay;
    std::int64_t fraction = 0;
    std::optional<std::int64_t> zone;
    if (in.at(" T")) {
        in.take();
        seconds += in.number(2, 0, 23) * 3600;
        in.skip(':');
        seconds += in.number(2, 0, 59) * 60;
        if (in.at(":")) {
            in.skip(':');
            seconds += in.number(2, 0, 59);
            if (in.at(".")) {
                in.skip('.');
                fraction = in.fraction();
            }
        }
        zone = readZone(in);
    }
    if (!in.ok() || !in.atEnd())
        return std::nullopt;
    if (!zone)
        zone = utcOffset ? utcOffset(seconds) : 0;
    return inNanoseconds(seconds - *zone, fraction);
}

} // namespace predicate
