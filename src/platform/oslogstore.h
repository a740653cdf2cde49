// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"
#include "platform/logstore/store.h"

#include <QDateTime>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

/// A length of time in nanoseconds, rounded, at most what 64 bits hold; 0 for what is not a number.
std::int64_t wholeNanoseconds(double seconds);

/// A log store under the operations that the application asks of it.
class OSLogStore
{
public:
    /// A place in a store: nanoseconds since 1970-01-01 UTC.
    struct Position
    {
        std::int64_t time;
        /// The place so much later (earlier when negative); the ends of time are not passed.
        Position after(double seconds) const;
    };

    /// Opens the archive or log folder at an absolute path. `watch` may cancel that.
    static Result<OSLogStore> open(const QString& path,
                                   logstore::StoreOrigin origin = logstore::StoreOrigin::HandedOver,
                                   const logstore::OpenWatch& watch = {});

    /// Whether a store is found from the folder at an absolute path.
    static bool isStore(const QString& path);
    /// The path of the log archive in a folder that is not a store itself.
    static std::optional<QString> archiveInside(const QString& path);

    /// What could not be read so far, and of how many trace and time files.
    const logstore::StoreProblems& problems() const { return m_store.problems(); }
    std::size_t fileCount() const { return m_store.fileCount(); }

    Position position(const QDateTime& date) const;
    /// `seconds` counts from the store's last entry; negative is before it.
    Position position(double secondsSinceEnd) const;

    /// The entries from the position on, oldest first.
    logstore::EntryStream
    getEntries(Position at, std::shared_ptr<const logstore::EntryFilter> matching = nullptr) const;

private:
    explicit OSLogStore(logstore::Store store) : m_store(std::move(store)) {}
    logstore::Store m_store;
};

/// Why a part of a store could not be read, to stand after a colon: "Permission denied".
QString reason(const logstore::StoreProblem& problem);

/// Where log stores come from. `watch` may cancel an opening.
class LogStores
{
public:
    virtual ~LogStores() = default;
    /// The local system's store.
    virtual Result<OSLogStore> local(const logstore::OpenWatch& watch) = 0;
    /// The saved archive at an absolute path.
    virtual Result<OSLogStore> archive(const QString& path, const logstore::OpenWatch& watch) = 0;
};

/// The log stores of this machine's file system. The local store is the first of the given folders
/// that has a log store's folder of trace files.
class SystemLogStores final : public LogStores
{
public:
    /// Gives the folder of a store to take for the local one.
    using StandIn = std::function<Result<QString>()>;

    /// `localFolders` are absolute paths, the most wanted first. When none of them has a log store,
    /// `standIn` is asked, each time anew.
    SystemLogStores(QStringList localFolders, StandIn standIn);

    /// The folder that local() opens.
    Result<QString> localFolder() const;

    Result<OSLogStore> local(const logstore::OpenWatch& watch) override;
    Result<OSLogStore> archive(const QString& path, const logstore::OpenWatch& watch) override;

private:
    QStringList m_localFolders;
    StandIn m_standIn;
};
