// SPDX-License-Identifier: MIT
#include "platform/desktop/symbols.h"
#include "support/testcase.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The colour of the symbol's fully inked pixels, and how many there are.
std::pair<QColor, int> inkOf(const QIcon& icon, QIcon::Mode mode = QIcon::Normal)
{
    const QImage image =
        icon.pixmap(QSize(48, 48), 1, mode).toImage().convertToFormat(QImage::Format_ARGB32);
    QColor ink;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) < 255)
                continue;
            ink = image.pixelColor(x, y);
            ++count;
        }
    }
    return {ink, count};
}

} // namespace

class TestSymbols : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void everySymbolIsDrawn_data()
    {
        QTest::addColumn<QString>("name");
        for (const QFileInfo& drawing : QDir(u":/symbols"_s).entryInfoList())
            QTest::newRow(qPrintable(drawing.fileName())) << drawing.completeBaseName();
    }

    void everySymbolIsDrawn()
    {
        QFETCH(QString, name);
        const auto [ink, count] = inkOf(symbolIcon(name));
        QVERIFY2(count > 100 && count < 48 * 48 * 3 / 4, qPrintable(QString::number(count)));
    }

    void unknownNameIsNull() { QVERIFY(symbolIcon(u"no.such.symbol"_s).isNull()); }

    void coloursFollowThePalette()
    {
        const QIcon icon = symbolIcon(u"gear"_s);
        for (const QRgb colour : {0xff102030, 0xfff0f0f0}) {
            QPalette palette;
            palette.setColor(QPalette::ButtonText, QColor(colour));
            QApplication::setPalette(palette);
            QCOMPARE(inkOf(icon).first, QColor(colour));
        }
    }

    void disabledIsPaler()
    {
        QPalette palette;
        palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x808080));
        QApplication::setPalette(palette);
        QCOMPARE(inkOf(symbolIcon(u"archivebox.fill"_s), QIcon::Disabled).first, QColor(0x808080));
    }
};

TESSEL_TEST(TestSymbols)
#include "tst_symbols.moc"
