// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "support/predicatecases.h"
#include "support/predicateprinter.h"
#include "support/testcase.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString caseFile()
{
    const QString own = qEnvironmentVariable("TESSEL_PREDICATE_CASES");
    if (!own.isEmpty())
        return own;
    const QString samples = qEnvironmentVariable("TESSEL_SAMPLES");
    return samples.isEmpty() ? samples : samples + u"/../predicate-cases.jsonl"_s;
}

} // namespace

/// The cases of a file that is kept outside of the source tree.
class TestPredicateCases : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString file = caseFile();
        if (file.isEmpty() || !QFile::exists(file))
            QSKIP("TESSEL_PREDICATE_CASES names no file and none stands beside TESSEL_SAMPLES");
        auto cases = readPredicateCases(file.toStdString());
        QVERIFY2(cases, cases ? "" : cases.error().description.c_str());
        m_cases = *std::move(cases);
        QVERIFY(!m_cases.empty());
    }

    void everyCaseHolds()
    {
        for (const PredicateCase& predicateCase : m_cases) {
            const std::string instead = shortfall(predicateCase);
            const std::string shown =
                predicateCase.id + ": " + predicateCase.predicate + ": " + instead;
            QVERIFY2(instead.empty(), shown.c_str());
        }
    }

    void whatIsPrintedParsesToTheSameTree()
    {
        for (const PredicateCase& predicateCase : m_cases) {
            const auto tree = predicate::parse(predicateCase.predicate, predicateCase.arguments);
            if (!tree)
                continue;
            const auto printed = print(*tree);
            const auto again = predicate::parse(printed.text, printed.arguments);
            QVERIFY2(again && *again == *tree, printed.text.c_str());
        }
    }

private:
    std::vector<PredicateCase> m_cases;
};

TESSEL_TEST(TestPredicateCases)
#include "tst_predicatecases.moc"
