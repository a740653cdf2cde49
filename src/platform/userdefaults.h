// SPDX-License-Identifier: MIT
#pragma once

#include "platform/settingsfile.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <optional>

/// Where the user's preferences live: "Tessel/Tessel.conf" in the user's configuration folder.
QString preferencesFile();

/// The per-user preferences store. A key is absent until it is first written; absent and empty
/// differ for every type. What is set is there at once, and on disk a moment after the last change,
/// at latest when the store is destroyed.
///
/// A file that cannot be read or written is left as it is: the store goes on in memory, with what
/// could be read, and says so once.
class UserDefaults : public QObject
{
    Q_OBJECT

public:
    /// Keeps the preferences in the file at `path`.
    explicit UserDefaults(const QString& path, QObject* parent = nullptr);
    ~UserDefaults() override;

    std::optional<QString> string(const QString& key) const;
    std::optional<bool> boolean(const QString& key) const;
    std::optional<QStringList> stringArray(const QString& key) const;

    void set(const QString& key, const QString& value);
    void set(const QString& key, bool value);
    void set(const QString& key, const QStringList& value);

    /// Writes what is not on disk yet.
    void save();
    /// Runs `change`, which may read and set values, with no other process writing in between, and
    /// saves.
    void change(const std::function<void()>& change);

Q_SIGNALS:
    /// A key was written with a value other than the one it had.
    void changed(const QString& key);
    /// The file cannot be read or written; sent at most once, from the event loop.
    void failed(const QString& description);

private:
    void write(const QString& key, const QStringList& value);
    void saveSoon();
    void check(const Result<void>& saved);
    void fail(const QString& description);

    SettingsFile m_file;
    QTimer m_idle;
    QElapsedTimer m_sinceUnsaved;
    bool m_saidFailed = false;
};
