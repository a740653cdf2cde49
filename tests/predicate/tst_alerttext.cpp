// SPDX-License-Identifier: MIT
#include "platform/predicate/predicateerror.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using predicate::alertText;

class TestAlertText : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void linesAndCarets_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("shown");
        QTest::newRow("first character") << u"a == 1"_s << 0 << u"Why.\n\na == 1\n^"_s;
        QTest::newRow("end of the text") << u"a =="_s << 4 << u"Why.\n\na ==\n    ^"_s;
        QTest::newRow("position beyond the text") << u"a"_s << 9 << u"Why.\n\na\n ^"_s;
        QTest::newRow("second of three lines")
            << u"a\nb == c\nd"_s << 4 << u"Why.\n\nb == c\n  ^"_s;
        QTest::newRow("end of a line") << u"ab\r\ncd"_s << 2 << u"Why.\n\nab\n  ^"_s;
        QTest::newRow("tab") << u"\ta ? b"_s << 3 << u"Why.\n\n a ? b\n   ^"_s;
        QTest::newRow("pair of surrogates") << u"'📍' ?"_s << 5 << u"Why.\n\n'📍' ?\n     ^"_s;
        QTest::newRow("wide and combining")
            << u"日e\u0301?"_s << 3 << u"Why.\n\n日e\u0301?\n   ^"_s;
        QTest::newRow("inside a pair") << u"📍?"_s << 1 << u"Why.\n\n📍?\n^"_s;
        QTest::newRow("nothing to show") << u""_s << 0 << u"Why."_s;
        QTest::newRow("empty line") << u"a ==\n\n"_s << 5 << u"Why.\n\na ==\n    ^"_s;
        QTest::newRow("line of blanks") << u"b\na == \r\n \t"_s << 10 << u"Why.\n\na == \n    ^"_s;
        QTest::newRow("only blanks") << u"\n "_s << 1 << u"Why.\n\n \n^"_s;
        QTest::newRow("character that is not shown") << u"a\u200d?"_s << 2 << u"Why.\n\na ?\n  ^"_s;
    }

    void linesAndCarets()
    {
        QFETCH(const QString, text);
        QFETCH(const int, position);
        const predicate::PredicateError error{predicate::Stage::Parse,
                                              static_cast<std::size_t>(position), "Why."};
        QTEST(QString::fromStdString(alertText(error, text.toStdString())), "shown");
    }

    void longLinesAreCut_data()
    {
        QTest::addColumn<int>("position");
        for (const int position : {0, 1, 40, 70, 500, 999, 1000})
            QTest::addRow("%d", position) << position;
    }

    void longLinesAreCut()
    {
        QFETCH(const int, position);
        QString line(1000, u'x');
        if (position < line.size())
            line[position] = u'?';
        const predicate::PredicateError error{predicate::Stage::Bind,
                                              static_cast<std::size_t>(position), "Why."};
        const QStringList shown =
            QString::fromStdString(alertText(error, line.toStdString())).split(u'\n');
        QCOMPARE(shown.size(), 4);
        QVERIFY(shown[2].size() <= 80);
        const qsizetype caret = shown[3].indexOf(u'^');
        QVERIFY(position == 1000 ? caret == shown[2].size() : shown[2][caret] == u'?');
    }
};

TESSEL_TEST(TestAlertText)
#include "tst_alerttext.moc"
