// SPDX-License-Identifier: MIT
#include "support/predicatecases.h"
#include "support/testcase.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

/// The cases of the file beside this one, and of one kept outside of the source tree.
class TestCases : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void everyCaseHolds_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("of this folder") << QFINDTESTDATA("cases.jsonl");
        QTest::newRow("from elsewhere")
            << qEnvironmentVariable("TESSEL_PREDICATE_CASES", qEnvironmentVariable("TESSEL_SAMPLES")
                                                                  + u"/../predicate-cases.jsonl"_s);
    }

    void everyCaseHolds()
    {
        QFETCH(const QString, file);
        if (!QFile::exists(file) && QTest::currentDataTag() == "from elsewhere"_ba)
            QSKIP("TESSEL_PREDICATE_CASES names no file and none stands beside TESSEL_SAMPLES");
        const auto outcomes = tryPredicateCases(file.toStdString());
        QVERIFY2(outcomes, outcomes ? "" : outcomes.error().description.c_str());
        std::string failures;
        for (const CaseFailure& failure : outcomes->failures)
            failures += '\n' + failure.name + ": " + failure.predicate + ": " + failure.instead;
        QVERIFY2(failures.empty(), failures.c_str());
        QVERIFY(outcomes->cases > 100);
    }
};

TESSEL_TEST(TestCases)
#include "tst_cases.moc"
