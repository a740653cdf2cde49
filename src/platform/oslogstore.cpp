// SPDX-License-Identifier: MIT
#include "platform/oslogstore.h"

#include <QFile>

#include <cmath>
#include <limits>

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;

/// The sum, or the end of the range that it would pass.
std::int64_t saturatingSum(std::int64_t a, std::int64_t b)
{
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(a, b, &sum))
        return sum;
    return b < 0 ? std::numeric_limits<std::int64_t>::min()
                 : std::numeric_limits<std::int64_t>::max();
}

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
    return {saturatingSum(time, wholeNanoseconds(seconds))};
}

Result<OSLogStore> OSLogStore::open(const QString& path, logstore::StoreOrigin origin)
{
    return logstore::Store::open(QFile::encodeName(path).toStdString(), origin)
        .map([](logstore::Store&& store) { return OSLogStore(std::move(store)); });
}

OSLogStore::Position OSLogStore::position(const QDateTime& date) const
{
    std::int64_t time = 0;
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    if (__builtin_mul_overflow(milliseconds, nanosecondsPerMillisecond, &time))
        time = milliseconds < 0 ? std::numeric_limits<std::int64_t>::min()
                                : std::numeric_limits<std::int64_t>::max();
    return {time};
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
