// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusVariant>
#include <QObject>

/// What the desktop's portal tells of the user's light or dark preference.
class DesktopAppearance final : public QObject
{
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject* parent);

    /// False also where there is no portal, or it does not answer at once.
    static bool prefersDark();

Q_SIGNALS:
    void changed(bool dark);

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};
