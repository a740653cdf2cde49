// SPDX-License-Identifier: MIT
#include "platform/systemlogstores.h"

#include <QFileInfo>

#include <algorithm>

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
