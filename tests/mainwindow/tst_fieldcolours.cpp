// SPDX-License-Identifier: MIT
#include "mainwindow/fieldcolours.h"
#include "support/testcase.h"

#include <QPalette>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// Relative luminance, and the contrast of two colours, as the accessibility guidelines define
/// them.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
           + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

class TestFieldColours : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyToneCanBeRead_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("alternate");
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("window");
        QTest::addColumn<bool>("hasTones");
        const QColor black(Qt::black);
        const QColor white(Qt::white);
        const auto row = [](const char* name, QColor base, QColor alternate, QColor text,
                            QColor window, bool hasTones) {
            QTest::addRow("%s", name) << base << alternate << text << window << hasTones;
        };
        row("dark", 0x1e1e1e, 0x262626, 0xf0f0f0, 0x2b2b2d, true);
        row("light", white, 0xf5f5f5, 0x1a1a1a, 0xefefef, true);
        row("black on white in grey windows", white, 0xf5f5f5, black, 0xefefef, true);
        row("grey on white throughout", white, 0xf5f5f5, 0x404040, white, true);
        row("black on white throughout", white, white, black, white, false);
        row("white on black throughout", black, black, white, black, false);
        row("yellow on black throughout", black, black, 0xffff00, black, false);
    }

    void everyToneCanBeRead()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, alternate);
        QFETCH(QColor, text);
        QFETCH(QColor, window);
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Window, window);
        const FieldColours colours(palette);
        using enum FieldColour;
        QCOMPARE(colours[Normal], text);
        QTEST(colours[Red] != text, "hasTones");
        for (const QColor& row : {base, alternate, colours.selectedRow()}) {
            for (const FieldColour field : {Normal, Red, Green, Blue, Yellow})
                QVERIFY2(contrast(colours[field], row) >= 4.5,
                         qPrintable(colours[field].name() + row.name()));
            QVERIFY2(contrast(colours.dim(), row) >= 4.5, qPrintable(row.name()));
            QVERIFY2(contrast(colours.accent(), row) >= 3.0, qPrintable(row.name()));
        }
    }
};

TESSEL_TEST(TestFieldColours)
#include "tst_fieldcolours.moc"
