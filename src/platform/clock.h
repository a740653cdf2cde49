// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QTimeZone>

/// The machine's clocks and the user's time zone.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    virtual QTimeZone timeZone() const = 0;
    /// A monotonic counter of the machine's time base.
    virtual quint64 tickCount() const = 0;
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    QTimeZone timeZone() const override;
    quint64 tickCount() const override;
};
