// SPDX-License-Identifier: MIT
#include "model/entrydate.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
constexpr std::int64_t secondsPerDay = 86'400;

/// Quotient rounded down and the rest, which is never negative.
struct Division
{
    std::int64_t quotient;
    std::int64_t rest;
};

Division floorDivide(std::int64_t dividend, std::int64_t divisor)
{
    Division result{dividend / divisor, dividend % divisor};
    if (result.rest < 0) {
        --result.quotient;
        result.rest += divisor;
    }
    return result;
}

struct CivilDate
{
    std::int64_t year;
    unsigned month;
    unsigned day;
};

/// The Gregorian date of a day counted from 1970-01-01. Years are counted from March, so that the
/// leap day is the last one, in spans of 400 years, which all have the same length.
CivilDate civilDate(std::int64_t day)
{
    constexpr std::int64_t daysPerSpan = 146'097;
    constexpr std::int64_t daysTo1970 = 719'468; // from 1 March of the year 0
    const auto [span, rest] = floorDivide(day + daysTo1970, daysPerSpan);
    const auto dayOfSpan = static_cast<unsigned>(rest);
    const unsigned yearOfSpan =
        (dayOfSpan - dayOfSpan / 1460 + dayOfSpan / 36'524 - dayOfSpan / 146'096) / 365;
    const unsigned dayOfYear = dayOfSpan - (365 * yearOfSpan + yearOfSpan / 4 - yearOfSpan / 100);
    const unsigned monthFromMarch = (5 * dayOfYear + 2) / 153;
    const unsigned month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {span * 400 + yearOfSpan + (month <= 2 ? 1 : 0), month,
            dayOfYear - (153 * monthFromMarch + 2) / 5 + 1};
}

void writeDigits(char* at, std::size_t count, std::int64_t number)
{
    for (std::size_t i = count; i-- > 0; number /= 10)
        at[i] = static_cast<char>('0' + number % 10);
}

} // namespace

EntryDateWriter::EntryDateWriter(const QTimeZone& zone, const QString& suffix) : m_zone(zone)
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
    const auto [second, nanosecond] = floorDivide(time, nanosecondsPerSecond);
    if (second != m_writtenSecond)
        writeClockTime(second);
    writeDigits(&m_text[clockTimeLength + 1], fractionLength - 1, nanosecond / 1000);
    return Text(std::string_view(m_text.data(), m_length));
}

void EntryDateWriter::writeClockTime(std::int64_t second)
{
    if (second < m_from || second >= m_until)
        lookUpOffset(second);
    const auto [day, secondOfDay] = floorDivide(second + m_offset, secondsPerDay);
    const CivilDate date = civilDate(day);
    // Nanoseconds in 64 bits span the years 1677 to 2262: four digits always.
    writeDigits(m_text.data(), 4, date.year);
    writeDigits(&m_text[5], 2, date.month);
    writeDigits(&m_text[8], 2, date.day);
    writeDigits(&m_text[11], 2, secondOfDay / 3600);
    writeDigits(&m_text[14], 2, secondOfDay / 60 % 60);
    writeDigits(&m_text[17], 2, secondOfDay % 60);
    m_writtenSecond = second;
}

void EntryDateWriter::lookUpOffset(std::int64_t second)
{
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(second, Qt::UTC);
    m_offset = m_zone.offsetFromUtc(moment);
    m_from = second;
    m_until = std::numeric_limits<std::int64_t>::max();
    if (!m_zone.hasTransitions())
        return;
    const QTimeZone::OffsetData next = m_zone.nextTransition(moment);
    if (next.atUtc.isValid())
        m_until = next.atUtc.toSecsSinceEpoch();
}

QString zoneSuffix(int offsetFromUtc)
{
    const int minutes = std::abs(offsetFromUtc) / 60;
    return QStringLiteral("%1%2%3")
        .arg(offsetFromUtc < 0 ? QLatin1Char('-') : QLatin1Char('+'))
        .arg(minutes / 60, 2, 10, QLatin1Char('0'))
        .arg(minutes % 60, 2, 10, QLatin1Char('0'));
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
    return QDateTime(day, time, Qt::UTC).addSecs(-offset);
}
