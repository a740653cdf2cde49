// SPDX-License-Identifier: MIT
#include "platform/clocktime.h"

#include <QDateTime>

#include <array>
#include <chrono>
#include <cstdlib>
#include <limits>

namespace {

void writeTwoDigits(char* at, std::int64_t number)
{
    writeDigits(at, 2, number);
}

} // namespace

int ClockTimeWriter::operator()(std::int64_t second, char* at)
{
    using namespace std::chrono;
    if (second < m_from || second >= m_until)
        lookUpOffset(second);
    const sys_seconds shown(seconds(second + m_offset));
    const sys_days day = floor<days>(shown);
    const year_month_day date(day);
    const hh_mm_ss time(shown - day);
    writeDigits(at, 4, int{date.year()});
    at[4] = '-';
    writeTwoDigits(at + 5, unsigned{date.month()});
    at[7] = '-';
    writeTwoDigits(at + 8, unsigned{date.day()});
    at[10] = ' ';
    writeTwoDigits(at + 11, time.hours().count());
    at[13] = ':';
    writeTwoDigits(at + 14, time.minutes().count());
    at[16] = ':';
    writeTwoDigits(at + 17, time.seconds().count());
    return m_offset;
}

void ClockTimeWriter::lookUpOffset(std::int64_t second)
{
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(second, QTimeZone::utc());
    m_offset = m_zone.offsetFromUtc(moment);
    m_from = std::numeric_limits<std::int64_t>::min();
    m_until = std::numeric_limits<std::int64_t>::max();
    if (!m_zone.hasTransitions())
        return;
    // A change at this very moment has happened.
    const QDateTime last = m_zone.previousTransition(moment.addSecs(1)).atUtc;
    const QDateTime next = m_zone.nextTransition(moment).atUtc;
    if (last.isValid())
        m_from = last.toSecsSinceEpoch();
    if (next.isValid())
        m_until = next.toSecsSinceEpoch();
}

QString zoneSuffix(int offsetFromUtc)
{
    const int minutes = std::abs(offsetFromUtc) / 60;
    std::array<char, 5> text{offsetFromUtc < 0 ? '-' : '+'};
    writeTwoDigits(&text[1], minutes / 60);
    writeTwoDigits(&text[3], minutes % 60);
    return QString::fromLatin1(text.data(), text.size());
}

void writeDigits(char* at, std::size_t count, std::int64_t number)
{
    for (std::size_t i = count; i-- > 0; number /= 10)
        at[i] = static_cast<char>('0' + number % 10);
}
