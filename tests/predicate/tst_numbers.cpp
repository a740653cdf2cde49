// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "platform/predicate/value.h"
#include "support/predicatecases.h"
#include "support/warnings.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace predicate;

/// Numbers keep their mathematical value across integers, unsigned integers and reals.
class Numbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarnings(); }
    void ascendingNumbers();
    void constants_data();
    void constants();
};

void Numbers::ascendingNumbers()
{
    // Each less than all that follow it.
    const std::vector<Value> ascending = {
        Value::real(-1e300),
        Value::real(-9223372036854777856.0),
        Value::integer(INT64_MIN),
        Value::integer(INT64_MIN + 1),
        Value::seconds(-1'500'000'000),
        Value::integer(-1),
        Value::seconds(-1),
        Value::integer(0),
        Value::real(5e-324),
        Value::seconds(1),
        Value::real(0.5),
        Value::integer(1),
        Value::seconds(1'000'000'001),
        Value::integer(9007199254740992),
        Value::integer(9007199254740993),
        Value::real(9007199254740994.0),
        Value::integer(INT64_MAX),
        Value::real(9223372036854775808.0),
        Value::unsignedInteger(9223372036854775809U),
        Value::unsignedInteger(UINT64_MAX),
        Value::real(18446744073709551616.0),
    };
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        QCOMPARE(compareNumbers(ascending[i], ascending[i]), 0);
        for (std::size_t j = i + 1; j < ascending.size(); ++j) {
            const std::string place = std::to_string(i) + " and " + std::to_string(j);
            QVERIFY2(compareNumbers(ascending[i], ascending[j]) < 0, place.c_str());
            QVERIFY2(compareNumbers(ascending[j], ascending[i]) > 0, place.c_str());
        }
    }
    QCOMPARE(compareNumbers(Value::unsignedInteger(std::uint64_t{1} << 63U),
                            Value::real(9223372036854775808.0)),
             0);
}

void Numbers::constants_data()
{
    QTest::addColumn<QString>("text");
    const auto holds = [](const char* name, const QString& text) { QTest::newRow(name) << text; };
    holds("integers divide as integers",
          u"7/2 == 3 AND -7/2 == -3 AND 7/2.0 == 3.5 AND 1/2 == 0"_s);
    holds("division by zero", u"1/0 == nil AND 1/0.0 == nil AND NOT 1/0 > 0"_s);
    holds(
        "overflow",
        u"18446744073709551615 + 1 == nil AND -9223372036854775808 - 1 == nil AND 2 ** 64 == nil AND 1e300 * 1e300 == nil"_s);
    holds("overflow of a product", u"18446744073709551615 * 18446744073709551615 == nil"_s);
    holds(
        "no overflow between the types",
        u"9223372036854775807 + 1 == 9223372036854775808 AND 18446744073709551615 - 1 == 18446744073709551614"_s);
    holds("lowest by minus one", u"-9223372036854775808 / -1 == 9223372036854775808"_s);
    holds(
        "powers",
        u"2 ** 63 == 9223372036854775808 AND (-2) ** 63 == -9223372036854775808 AND 0 ** 0 == 1 AND 2 ** -1 == 0.5 AND 0 ** -1 == nil"_s);
    holds(
        "huge exponents",
        u"1 ** 18446744073709551615 == 1 AND (-1) ** 18446744073709551615 == -1 AND 0 ** 9 == 0 AND 3 ** 1000000 == nil"_s);
    holds("power beyond any product", u"18446744073709551615 ** 2 == nil"_s);
    holds("left association", u"10 - 3 - 2 == 5 AND 64 / 4 / 2 == 8 AND 2 ** 3 ** 2 == 64"_s);
    holds("minus before power", u"-2 ** 2 == 4 AND - - 3 == 3 AND -(1 + 2) == -3"_s);
    holds("nil in arithmetic", u"1 + nil == nil AND -nil == nil AND nil ** 2 == nil"_s);
    holds("truth values are numbers",
          u"YES + YES == 2 AND TRUE == 1 AND NO == 0.0 AND -YES == -1"_s);
    holds(
        "literal beyond the integers is real",
        u"18446744073709551616 == 18446744073709551616.0 AND 18446744073709551617 == 18446744073709551616"_s);
    holds(
        "bases",
        u"0XfF == 255 AND 0O17 == 15 AND 0B101 == 5 AND 007 == 7 AND .5 == 0.5 AND 1e3 == 1000 AND 25E-1 == 2.5"_s);
    holds("not through a real",
          u"9007199254740993 != 9007199254740992 AND 9007199254740993 != 9007199254740992.0"_s);
    const QString zeros(400, u'0');
    holds("too small to be told from 0", u"1e-400 == 0 AND 1e-99999999999999999999 == 0"_s);
    holds("first digit far behind the point", u"0."_s + zeros + u"1 == 0"_s);
    holds("digits and exponent cancel out", u"1"_s + zeros + u"e-400 == 1"_s);
    holds("zeros and exponent cancel out", u"0."_s + zeros + u"1e401 == 1"_s);
}

void Numbers::constants()
{
    QFETCH(const QString, text);
    const auto built = build(text.toStdString());
    QVERIFY2(built, built ? "" : built.error().sentence.c_str());
    QVERIFY(Matcher(*built).matches(MadeUpEntry()));
}

QTEST_APPLESS_MAIN(Numbers)
#include "tst_numbers.moc"
