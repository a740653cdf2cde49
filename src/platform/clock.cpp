// SPDX-License-Identifier: MIT
#include "platform/clock.h"

#include <chrono>

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

QTimeZone SystemClock::timeZone() const
{
    const QTimeZone zone = QTimeZone::systemTimeZone();
    return zone.isValid() ? zone : QTimeZone::utc(); // TZ may name a zone that is not known here
}

quint64 SystemClock::tickCount() const
{
    return static_cast<quint64>(std::chrono::steady_clock::now().time_since_epoch().count());
}
