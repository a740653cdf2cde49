// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QSettings>
#include <QStringList>

#include <optional>

/// Where the user's preferences live: "Tessel/Tessel.conf" in the user's configuration folder.
QString preferencesFile();

/// The per-user preferences store. A key is absent until it is first written; absent and empty
/// differ for every type. Writes are on disk when the call returns.
///
/// A file that cannot be read or written is left as it is: the store goes on in memory, with what
/// could be read, and says so once.
class UserDefaults : public QObject
{
    Q_OBJECT

public:
    /// Keeps the preferences in the file at `path`.
    explicit UserDefaults(const QString& path, QObject* parent = nullptr);

    std::optional<QString> string(const QString& key) const;
    std::optional<bool> boolean(const QString& key) const;
    std::optional<QStringList> stringArray(const QString& key) const;

    void set(const QString& key, const QString& value);
    void set(const QString& key, bool value);
    void set(const QString& key, const QStringList& value);

Q_SIGNALS:
    /// A key was written with a value other than the one it had.
    void changed(const QString& key);
    /// The file cannot be read or written; sent at most once, from the event loop.
    void failed(const QString& description);

private:
    QVariant value(const QString& key) const;
    void write(const QString& key, const QVariant& value);
    /// `sentences` have a place for the file's path.
    void fail(const QString& sentences);

    QSettings m_settings;
    /// Values that are not to reach the file: everything, once the file was found damaged.
    std::optional<QHash<QString, QVariant>> m_memory;
    bool m_saidFailed = false;
};
