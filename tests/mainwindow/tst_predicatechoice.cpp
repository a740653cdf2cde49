// SPDX-License-Identifier: MIT
#include "mainwindow/predicatechoice.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestPredicateChoice : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void chosen_data()
    {
        using Choice = std::optional<QStringList>; // format, then arguments
        QTest::addColumn<int>("index");
        QTest::addColumn<std::optional<QString>>("specPred");
        QTest::addColumn<Choice>("expected");
        const std::optional<QString> nothing;

        QTest::addRow("none") << 0 << nothing << Choice();
        QTest::addRow("subsystem")
            << 1 << nothing << Choice(QStringList{u"subsystem ==[c] %@"_s, u"typed"_s});
        QTest::addRow("message") << 2 << nothing
                                 << Choice(
                                        QStringList{u"eventMessage CONTAINS[c] %@"_s, u"typed"_s});
        QTest::addRow("process") << 3 << nothing
                                 << Choice(QStringList{u"processImagePath CONTAINS[c] %@"_s,
                                                       u"typed"_s});
        QTest::addRow("sender") << 4 << nothing
                                << Choice(QStringList{u"senderImagePath CONTAINS[c] %@"_s,
                                                      u"typed"_s});
        QTest::addRow("special, not stored") << 5 << nothing << Choice();
        QTest::addRow("special, stored empty")
            << 5 << std::optional(QString()) << Choice(QStringList{QString()});
        QTest::addRow("special, typographic quotes")
            << 5 << std::optional(u"a == “b” && c == ‘d’"_s)
            << Choice(QStringList{u"a == \"b\" && c == ‘d’"_s});
        QTest::addRow("library") << 6 << nothing << Choice(QStringList{u"six “quoted”"_s});
        QTest::addRow("beyond the library") << 7 << nothing << Choice();
        QTest::addRow("no row") << -1 << nothing << Choice();
    }

    void chosen()
    {
        QFETCH(int, index);
        QFETCH(std::optional<QString>, specPred);
        QFETCH(std::optional<QStringList>, expected);
        const QStringList predList{u"0"_s, u"1"_s, u"2"_s,           u"3"_s,
                                   u"4"_s, u"5"_s, u"six “quoted”"_s};
        const auto choice = chosenPredicate(index, u"typed"_s, specPred, predList);
        QCOMPARE(choice.has_value(), expected.has_value());
        if (choice)
            QCOMPARE(QStringList{choice->format} + choice->arguments, *expected);
    }
};

TESSEL_TEST(TestPredicateChoice)
#include "tst_predicatechoice.moc"
