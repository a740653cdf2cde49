// SPDX-License-Identifier: MIT
#include "platform/desktop/desktopappearance.h"

#include <QDBusConnection>
#include <QDBusMessage>

using namespace Qt::StringLiterals;

namespace {

const QString portal = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString portalSettings = u"org.freedesktop.portal.Settings"_s;
const QString appearanceSettings = u"org.freedesktop.appearance"_s;
const QString colourScheme = u"color-scheme"_s;

/// Of a colour scheme: 1 dark, 2 light, 0 no preference.
bool isDark(QVariant setting)
{
    constexpr uint dark = 1;
    while (setting.userType() == qMetaTypeId<QDBusVariant>())
        setting = setting.value<QDBusVariant>().variant();
    return setting.toUInt() == dark;
}

} // namespace

DesktopAppearance::DesktopAppearance(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<QDBusVariant>(); // the connection looks for the slot's types by name
    QDBusConnection::sessionBus().connect(portal, portalPath, portalSettings, u"SettingChanged"_s,
                                          this,
                                          SLOT(settingChanged(QString, QString, QDBusVariant)));
}

bool DesktopAppearance::prefersDark()
{
    constexpr int patienceMs = 300;
    QDBusMessage question =
        QDBusMessage::createMethodCall(portal, portalPath, portalSettings, u"Read"_s);
    question << appearanceSettings << colourScheme;
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, patienceMs);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return false;
    return isDark(answer.arguments().constFirst());
}

void DesktopAppearance::settingChanged(const QString& group,
                                       const QString& key,
                                       const QDBusVariant& value)
{
    if (group == appearanceSettings && key == colourScheme)
        Q_EMIT changed(isDark(value.variant()));
}
