// SPDX-License-Identifier: MIT
#pragma once

#include "platform/oslogstore.h"

#include <QStringList>

/// The log stores of this machine's file system. The local store is the first of the given folders
/// that has a log store's folder of trace files.
class SystemLogStores final : public LogStores
{
public:
    /// `localFolders` are absolute paths, the most wanted first.
    explicit SystemLogStores(QStringList localFolders);

    /// The folder that local() opens; the last one when none has a log store.
    QString localFolder() const;

    Result<OSLogStore> local() override;
    Result<OSLogStore> archive(const QString& path) override;

private:
    QStringList m_localFolders;
};
