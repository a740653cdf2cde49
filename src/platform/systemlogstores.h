// SPDX-License-Identifier: MIT
#pragma once

#include "platform/oslogstore.h"

#include <QStringList>

#include <functional>

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
