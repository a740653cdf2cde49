// SPDX-License-Identifier: MIT
#include "platform/desktop/appearance.h"
#include "support/testcase.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

bool isDark()
{
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

class TestAppearance : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void systemWithoutAPreferenceIsLight()
    {
        appearance::followSystem();
        QVERIFY(!isDark());
    }

    void changesOfTheSystemAreFollowed()
    {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("There is no message bus");
        QDBusConnection portal = QDBusConnection::connectToBus(
            qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"portal"_s);
        QVERIFY(portal.registerService(u"org.freedesktop.portal.Desktop"_s));
        const auto tell = [&portal](const QString& key, uint value) {
            QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                                             u"org.freedesktop.portal.Settings"_s,
                                                             u"SettingChanged"_s);
            signal << u"org.freedesktop.appearance"_s << key
                   << QVariant::fromValue(QDBusVariant(value));
            QVERIFY(portal.send(signal));
        };
        const QPalette before = QApplication::palette();
        // Told until it is heard: the bus may not know yet who listens and who speaks.
        const auto isDarkAfter = [&tell](uint scheme) {
            tell(u"color-scheme"_s, scheme);
            return isDark();
        };
        QTRY_VERIFY(isDarkAfter(1));
        tell(u"accent-color"_s, 0);
        QTRY_VERIFY(!isDarkAfter(2));
        QCOMPARE(QApplication::palette(), before);
        QDBusConnection::disconnectFromBus(portal.name());
    }

    void forcedDarkIsDarkThroughout()
    {
        appearance::forceDark();
        const QPalette palette = QApplication::palette();
        for (const QPalette::ColorGroup group :
             {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            for (const QPalette::ColorRole role :
                 {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                  QPalette::ToolTipBase})
                QVERIFY(palette.color(group, role).lightness() < 96);
            for (const QPalette::ColorRole role :
                 {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                  QPalette::PlaceholderText, QPalette::Link})
                QVERIFY(palette.color(group, role).lightness() > 128);
        }
    }

    void emptyFieldsHaveVisibleOutlines()
    {
        appearance::forceDark();
        QWidget window;
        QLineEdit field(&window);
        field.setGeometry(20, 20, 100, 24);
        window.resize(140, 64);
        const QImage image = window.grab().toImage();
        const int outline = image.pixelColor(20, 32).lightness();
        QVERIFY(outline > image.pixelColor(10, 32).lightness() + 40);
        QVERIFY(outline > image.pixelColor(60, 32).lightness() + 40);
    }
};

TESSEL_TEST(TestAppearance)
#include "tst_appearance.moc"
