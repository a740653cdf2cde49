// SPDX-License-Identifier: MIT
#pragma once

#include "platform/settingsfile.h"

/// What the windows remember unasked, such as the last folder used and their geometry. Kept apart
/// from the preferences, which hold what the user has set.
class StateFile
{
public:
    explicit StateFile(const QString& path) : m_file(path) {}
    /// In the user's folder for application state.
    static QString defaultPath();

    /// The folder last used in a panel, while it exists; else the user's documents.
    QString lastFolder() const;
    void setLastFolder(const QString& path);

    /// The documents last opened or saved, the newest first, also those that are not there now.
    QStringList recentFiles() const;
    void addRecentFile(const QString& path);
    void clearRecentFiles();

    /// The state of a window or toolbar under its identifier, as the toolkit saved it.
    QByteArray arrangement(const QString& identifier) const;
    void setArrangement(const QString& identifier, const QByteArray& state);

private:
    void keep(const QString& key, const std::optional<QStringList>& value);

    SettingsFile m_file;
};
