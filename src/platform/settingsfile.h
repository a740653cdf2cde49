// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"
#include "platform/settingstext.h"

#include <QHash>

#include <optional>
#include <sys/stat.h>

/// Texts and lists of texts by their keys, in a file that several processes may share. Values are
/// read afresh whenever the file has changed. Values that are set stand in memory until they are
/// saved; saving changes the keys that were set, and leaves all others as they are in the file.
class SettingsFile
{
public:
    enum class State { Readable, Damaged, Unreadable };

    explicit SettingsFile(const QString& path) : m_path(path) {}

    const QString& path() const { return m_path; }
    /// An absent file is readable, and empty. One in another state is never written.
    State state() const;

    /// Absent when the key is not there.
    std::optional<QStringList> value(const QString& key) const;
    /// A value that is absent removes the key.
    void set(const QString& key, const std::optional<QStringList>& value);

    bool isSaved() const { return m_unsaved.isEmpty(); }
    Result<void> save();
    /// Runs `change`, which may read and set values, and saves, with no other process saving in
    /// between.
    Result<void> change(const std::function<void()>& change);

private:
    using Values = QHash<QString, std::optional<QStringList>>;

    void refresh() const;
    Result<void> write();

    QString m_path;
    Values m_unsaved;
    // What the file held when it was last read, and what is known of that time.
    mutable State m_state = State::Readable;
    mutable SettingsText m_text;
    mutable Values m_decoded;
    mutable std::optional<struct stat> m_read;
};
