// SPDX-License-Identifier: MIT
#include "model/typednumber.h"
#include "support/testcase.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class TestTypedNumber : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data()
    {
        QTest::addColumn<qint64>("number");
        QTest::newRow("20") << qint64(20);
        QTest::newRow("+20") << qint64(20);
        QTest::newRow("-5") << qint64(-5);
        QTest::newRow("-0") << qint64(0);
        QTest::newRow("007") << qint64(7);
        QTest::newRow("9223372036854775807") << std::numeric_limits<qint64>::max();
        QTest::newRow("-9223372036854775808") << std::numeric_limits<qint64>::min();
    }

    void reads()
    {
        const auto number = typedNumber(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(number);
        QTEST(*number, "number");
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << QString();
        QTest::newRow("letters") << u"abc"_s;
        QTest::newRow("a fraction") << u"12.5"_s;
        QTest::newRow("an exponent") << u"1e3"_s;
        QTest::newRow("a blank before") << u" 20"_s;
        QTest::newRow("a blank after") << u"20 "_s;
        QTest::newRow("a sign alone") << u"+"_s;
        QTest::newRow("two signs") << u"+-5"_s;
        QTest::newRow("twice the same sign") << u"++5"_s;
        QTest::newRow("a zero character after") << u"20"_s + QChar(u'\0');
        QTest::newRow("digits of another script") << u"٢٠"_s;
        QTest::newRow("one too many") << u"9223372036854775808"_s;
        QTest::newRow("one too few") << u"-9223372036854775809"_s;
    }

    void refuses()
    {
        QFETCH(QString, text);
        QVERIFY(!typedNumber(text));
    }
};

TESSEL_TEST(TestTypedNumber)
#include "tst_typednumber.moc"
