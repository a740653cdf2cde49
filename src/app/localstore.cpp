// SPDX-License-Identifier: MIT
#include "app/localstore.h"

#include "platform/clock.h"
#include "platform/demonstrationstore.h"
#include "platform/systemlogstores.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

/// Until when the demonstration store reaches. A new window reads a few seconds from the beginning
/// of the present minute: they are to be there, even in the first moments of a minute.
QDateTime demonstrationEnd(const QDateTime& now)
{
    constexpr int firstSeconds = 6;
    const QTime time = now.time();
    const QDateTime minute(now.date(), QTime(time.hour(), time.minute()), now.timeZone());
    return std::max(now, minute.addSecs(firstSeconds));
}

} // namespace

QString demonstrationFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/Demonstration"_s;
}

QStringList localStoreFolders()
{
    return {u"/var/db"_s, u"/private/var/db"_s, demonstrationFolder()};
}

Result<void> prepareLocalStore(const SystemLogStores& stores, const Clock& clock)
{
    constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
    const QString folder = demonstrationFolder();
    if (stores.localFolder() != folder)
        return {};
    if (!QDir().mkpath(folder))
        return failure("The folder \"" + folder.toStdString()
                       + "\" for the demonstration store cannot be made.");
    const qint64 end = demonstrationEnd(clock.now()).toMSecsSinceEpoch();
    return writeDemonstrationStore(QDir(folder).filesystemAbsolutePath(),
                                   end * nanosecondsPerMillisecond);
}
