// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/value.h"
#include "support/testcase.h"

#include <QTest>

using namespace predicate;

/// TestNumbers keep their mathematical value across integers, unsigned integers and reals.
class TestNumbers : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void ascendingNumbers()
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
};

TESSEL_TEST(TestNumbers)
#include "tst_numbers.moc"
