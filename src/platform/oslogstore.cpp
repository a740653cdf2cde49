// SPDX-License-Identifier: MIT
#include "platform/oslogstore.h"

#include "platform/base/arithmetic.h"
#include "platform/base/timeunits.h"

#include <QFile>

#include <cmath>
#include <limits>

namespace {

} // namespace

std::int64_t wholeNanoseconds(double seconds)
{
    constexpr double limit = 9.2233720368547748e18; // the greatest double below 2^63
    const double nanoseconds = seconds * nanosecondsPerSecond;
    if (std::isnan(nanoseconds))
        return 0;
    if (nanoseconds > limit)
        return std::numeric_limits<std::int64_t>::max();
    if (nanoseconds < -limit)
        return std::numeric_limits<std::int64_t>::min();
    return std::llround(nanoseconds);
}

OSLogStore::Position OSLogStore::Position::after(double seconds) const
{
    return {saturated(Int128{time} + wholeNanoseconds(seconds))};
}

Result<OSLogStore> OSLogStore::open(const QString& path, logstore::StoreOrigin origin)
{
    return logstore::Store::open(QFile::encodeName(path).toStdString(), origin)
        .map([](logstore::Store&& store) { return OSLogStore(std::move(store)); });
}

OSLogStore::Position OSLogStore::position(const QDateTime& date) const
{
    return {saturated(Int128{date.toMSecsSinceEpoch()} * nanosecondsPerMillisecond)};
}

OSLogStore::Position OSLogStore::position(double secondsSinceEnd) const
{
    return Position{m_store.endTime()}.after(secondsSinceEnd);
}

logstore::EntryStream
OSLogStore::getEntries(Position at, std::shared_ptr<const logstore::EntryFilter> matching) const
{
    return m_store.entries(at.time, std::move(matching));
}
