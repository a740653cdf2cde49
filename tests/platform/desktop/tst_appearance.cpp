// SPDX-License-Identifier: MIT
#include "platform/desktop/appearance.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

class TestAppearance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void systemWithoutAPreferenceIsLight();
    void forcedDarkIsDarkThroughout();
    void emptyFieldsHaveVisibleOutlines();
};

void TestAppearance::init()
{
    QTest::failOnWarning(QRegularExpression(u"."_s));
}

void TestAppearance::systemWithoutAPreferenceIsLight()
{
    appearance::followSystem();
    QVERIFY(QApplication::palette().color(QPalette::Window).lightness() > 128);
}

void TestAppearance::forcedDarkIsDarkThroughout()
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

void TestAppearance::emptyFieldsHaveVisibleOutlines()
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

QTEST_MAIN(TestAppearance)
#include "tst_appearance.moc"
