// SPDX-License-Identifier: MIT
#include "platform/clock.h"

#include <chrono>

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

QTimeZone SystemClock::timeZone() const
{
    return QTimeZone::systemTimeZone();
}

quint64 SystemClock::tickCount() const
{
    return static_cast<quint64>(std::chrono::steady_clock::now().time_since_epoch().count());
}
