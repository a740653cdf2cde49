// SPDX-License-Identifier: MIT
#include "mainwindow/fieldcolours.h"

#include <QPalette>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

class TestFieldColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyToneCanBeRead_data();
    void everyToneCanBeRead();
};

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

void TestFieldColours::everyToneCanBeRead_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("alternate");
    QTest::addRow("dark") << QColor(0x1e1e1e) << QColor(0x262626);
    QTest::addRow("light") << QColor(0xffffff) << QColor(0xf5f5f5);
}

void TestFieldColours::everyToneCanBeRead()
{
    QFETCH(QColor, base);
    QFETCH(QColor, alternate);
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    const FieldColours colours(palette);
    using enum FieldColour;
    for (const QColor& row : {base, alternate, colours.selectedRow()}) {
        for (const FieldColour field : {Normal, Red, Green, Blue, Yellow})
            QVERIFY2(contrast(colours[field], row) >= 4.5,
                     qPrintable(colours[field].name() + row.name()));
        QVERIFY2(contrast(colours.dim(), row) >= 4.5, qPrintable(row.name()));
        QVERIFY2(contrast(colours.accent(), row) >= 3.0, qPrintable(row.name()));
    }
}

QTEST_GUILESS_MAIN(TestFieldColours)
#include "tst_fieldcolours.moc"
