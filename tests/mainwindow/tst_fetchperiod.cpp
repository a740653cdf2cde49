// SPDX-License-Identifier: MIT
#include "mainwindow/contentstate.h"
#include "support/testcase.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

class TestFetchPeriod : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void seconds_data()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("expected");
        QTest::addRow("decimal") << u"7.5"_s << 7.5;
        QTest::addRow("whole") << u"60"_s << 60.0;
        QTest::addRow("sign") << u"+3"_s << 3.0;
        QTest::addRow("negative") << u"-3"_s << -3.0;
        QTest::addRow("no digit before the point") << u".5"_s << 0.5;
        QTest::addRow("no digit after the point") << u"2."_s << 2.0;
        QTest::addRow("exponent") << u"1e3"_s << 1000.0;
        QTest::addRow("hexadecimal") << u"0x10"_s << 16.0;
        QTest::addRow("hexadecimal with exponent") << u"0X1.8P1"_s << 3.0;
        QTest::addRow("infinity") << u"-Infinity"_s << -infinity;
        QTest::addRow("inf") << u"inf"_s << infinity;
        QTest::addRow("too large for a number") << u"1e999"_s << infinity;
        QTest::addRow("too small for a number") << u"1e-999"_s << 0.0;

        QTest::addRow("empty") << QString() << 5.0;
        QTest::addRow("word") << u"abc"_s << 5.0;
        QTest::addRow("leading blank") << u" 5.5"_s << 5.0;
        QTest::addRow("leading line feed") << u"\n7"_s << 5.0;
        QTest::addRow("leading vertical tab") << u"\v7"_s << 5.0;
        QTest::addRow("trailing blank") << u"7 "_s << 5.0;
        QTest::addRow("decimal comma") << u"7,5"_s << 5.0;
        QTest::addRow("unit") << u"7s"_s << 5.0;
        QTest::addRow("digits of another script") << u"٧"_s << 5.0;
        QTest::addRow("no-break space before") << u"\u00a07"_s << 5.0;
        QTest::addRow("zero character") << u"7\0"_s << 5.0;
        QTest::addRow("zero character alone") << u"\0"_s << 5.0;
    }

    void seconds()
    {
        QFETCH(QString, text);
        QFETCH(double, expected);
        QCOMPARE(periodSeconds(text), expected);
    }

    void notANumber()
    {
        QVERIFY(std::isnan(periodSeconds(u"nan"_s)));
        QVERIFY(std::isnan(periodSeconds(u"-NaN(7)"_s)));
    }
};

TESSEL_TEST(TestFetchPeriod)
#include "tst_fetchperiod.moc"
