// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSettings>
#include <QStringList>

#include <optional>

/// The per-user preferences store. A key is absent until it is first written; absent and empty
/// differ for every type. Writes are on disk when the call returns.
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
    /// The file cannot be read or written; sent at most once.
    void failed(const QString& description);

private:
    mutable QSettings m_settings;
};
