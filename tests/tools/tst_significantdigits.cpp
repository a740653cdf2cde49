// SPDX-License-Identifier: MIT
#include "tools/significantdigits.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_SignificantDigits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void atMostFour_data();
    void atMostFour();
};

void tst_SignificantDigits::atMostFour_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    const QLocale c = QLocale::c();
    QTest::newRow("zero") << 0.0 << c << u"0"_s;
    QTest::newRow("whole") << 7.0 << c << u"7"_s;
    QTest::newRow("cut to four") << 12.34567 << c << u"12.35"_s;
    QTest::newRow("nothing to cut") << 0.5 << c << u"0.5"_s;
    QTest::newRow("small") << 0.000123456 << c << u"0.0001235"_s;
    QTest::newRow("large") << 1234567.0 << c << u"1235000"_s;
    QTest::newRow("no grouping") << 1234.0 << QLocale(u"en_US"_s) << u"1234"_s;
    QTest::newRow("comma") << 1234.5678 << QLocale(u"de_DE"_s) << u"1235"_s;
    QTest::newRow("decimal comma") << 3.14159 << QLocale(u"de_DE"_s) << u"3,142"_s;
    QTest::newRow("other digits") << 3.14159 << QLocale(u"ar_EG"_s) << u"٣٫١٤٢"_s;
}

void tst_SignificantDigits::atMostFour()
{
    QFETCH(double, number);
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    QCOMPARE(withFourSignificantDigits(number, locale), text);
}

QTEST_GUILESS_MAIN(tst_SignificantDigits)
#include "tst_significantdigits.moc"
