// SPDX-License-Identifier: MIT
#include "platform/oslogstore.h"

#include "platform/base/arithmetic.h"
#include "platform/base/timeunits.h"
#include "platform/logstore/storefolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <system_error>

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

Result<OSLogStore> OSLogStore::open(const QString& path,
                                    logstore::StoreOrigin origin,
                                    const logstore::OpenWatch& watch)
{
    auto store = logstore::Store::open(QFile::encodeName(path).toStdString(), origin, watch);
    if (store)
        return OSLogStore(std::move(*store));
    const QString name = QFile::decodeName(store.error().name.c_str());
    const QString folder = QFileInfo(path).absolutePath();
    return failure(QCoreApplication::translate("StoreProblems", "“%1” could not be read: %2.")
                       .arg(origin == logstore::StoreOrigin::System
                                ? name
                                : QDir(folder).relativeFilePath(name),
                            reason(store.error()))
                       .toStdString());
}

QString reason(const logstore::StoreProblem& problem)
{
    using logstore::ProblemKind;
    static const std::map<ProblemKind, const char*> reasons{
        {ProblemKind::UnreadableFolder, QT_TRANSLATE_NOOP("StoreProblems", "it is not a folder")},
        {ProblemKind::NotAFolder, QT_TRANSLATE_NOOP("StoreProblems", "it is not a folder")},
        {ProblemKind::NotAStore, QT_TRANSLATE_NOOP("StoreProblems", "it holds no log files")},
        {ProblemKind::Cancelled, QT_TRANSLATE_NOOP("StoreProblems", "it was cancelled")},
        {ProblemKind::UnreadableFile, QT_TRANSLATE_NOOP("StoreProblems", "it is not a file")},
        {ProblemKind::NotATraceFile,
         QT_TRANSLATE_NOOP("StoreProblems", "it does not begin as log files do")},
        {ProblemKind::DamagedChunks,
         QT_TRANSLATE_NOOP("StoreProblems", "it is damaged, and parts of it were left out")},
        {ProblemKind::UnknownCompression,
         QT_TRANSLATE_NOOP("StoreProblems", "parts of it are in an unknown compression")},
        {ProblemKind::CutShort,
         QT_TRANSLATE_NOOP("StoreProblems", "it became shorter while it was read")},
        {ProblemKind::DamagedTimes,
         QT_TRANSLATE_NOOP("StoreProblems", "it is damaged, and times may be wrong")},
        {ProblemKind::MissingStrings,
         QT_TRANSLATE_NOOP("StoreProblems", "the file with its format strings is missing")},
        {ProblemKind::DamagedStrings,
         QT_TRANSLATE_NOOP("StoreProblems", "its format strings cannot be used")}};
    if (problem.error != 0)
        return QString::fromStdString(std::generic_category().message(problem.error));
    return QCoreApplication::translate("StoreProblems", reasons.at(problem.kind));
}

bool OSLogStore::isStore(const QString& path)
{
    return logstore::isStore(QFile::encodeName(path).toStdString());
}

std::optional<QString> OSLogStore::archiveInside(const QString& path)
{
    const auto archive = logstore::archiveInside(QFile::encodeName(path).toStdString());
    if (!archive)
        return std::nullopt;
    return QFile::decodeName(archive->string().c_str());
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

SystemLogStores::SystemLogStores(QStringList localFolders, StandIn standIn)
    : m_localFolders(std::move(localFolders))
    , m_standIn(std::move(standIn))
{
}

Result<QString> SystemLogStores::localFolder() const
{
    const auto found =
        std::find_if(m_localFolders.begin(), m_localFolders.end(), [](const QString& folder) {
            return QFileInfo(folder + QStringLiteral("/diagnostics")).isDir();
        });
    if (found != m_localFolders.end())
        return *found;
    return m_standIn();
}

Result<OSLogStore> SystemLogStores::local(const logstore::OpenWatch& watch)
{
    const auto folder = localFolder();
    if (!folder)
        return tl::unexpected(folder.error());
    return OSLogStore::open(*folder, logstore::StoreOrigin::System, watch);
}

Result<OSLogStore> SystemLogStores::archive(const QString& path, const logstore::OpenWatch& watch)
{
    return OSLogStore::open(path, logstore::StoreOrigin::HandedOver, watch);
}
