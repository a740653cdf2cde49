// SPDX-License-Identifier: MIT
#include "platform/systemlogstores.h"

#include <QFileInfo>

#include <algorithm>

SystemLogStores::SystemLogStores(QStringList localFolders) : m_localFolders(std::move(localFolders))
{
    Q_ASSERT(!m_localFolders.isEmpty());
}

QString SystemLogStores::localFolder() const
{
    const auto found =
        std::find_if(m_localFolders.begin(), m_localFolders.end(), [](const QString& folder) {
            return QFileInfo(folder + QStringLiteral("/diagnostics")).isDir();
        });
    return found != m_localFolders.end() ? *found : m_localFolders.last();
}

Result<OSLogStore> SystemLogStores::local()
{
    return OSLogStore::open(localFolder(), logstore::StoreOrigin::System);
}

Result<OSLogStore> SystemLogStores::archive(const QString& path)
{
    return OSLogStore::open(path);
}
