// SPDX-License-Identifier: MIT
#include "mainwindow/starteditor.h"
#include "support/testcase.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

class TestStartEditor : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    static void digitsReplaceTheSectionAtTheCursor_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::addRow("before the year, on to the end")
            << 0 << u"202412041143"_s << u"2024-12-04 11:43"_s;
        QTest::addRow("amid the year") << 2 << u"2019"_s << u"2019-11-23 00:05"_s;
        QTest::addRow("after the month") << 7 << u"07"_s << u"2026-07-23 00:05"_s;
        QTest::addRow("before the minute") << 14 << u"59"_s << u"2026-11-23 00:59"_s;
    }

    static void digitsReplaceTheSectionAtTheCursor()
    {
        QFETCH(int, cursor);
        QFETCH(QString, typed);
        StartEditor editor(QDateTime(QDate(2026, 11, 23), QTime(0, 5)));
        auto* const text = editor.findChild<QLineEdit*>();
        text->setCursorPosition(cursor);
        QTest::keyClicks(&editor, typed);
        QTEST(editor.dateTime().toString(u"yyyy-MM-dd HH:mm"_s), "expected");
    }

    static void pasteSetsTheWholeStart_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("expected");
        const QString before = u"2026-11-23 00:05"_s;
        QTest::addRow("the time of a row")
            << u"2024-12-04 11:44:57.832532+0000 EndpointSecurity"_s << u"2024-12-04 11:44"_s;
        QTest::addRow("ISO, with blanks around")
            << u" 2024-12-04T11:44:57Z\n"_s << u"2024-12-04 11:44"_s;
        QTest::addRow("a day that is none") << u"2024-02-30 11:44"_s << before;
        QTest::addRow("the year alone, where it is selected") << u"2019"_s << u"2019-11-23 00:05"_s;
        QTest::addRow("no time") << u"yesterday"_s << before;
    }

    static void pasteSetsTheWholeStart()
    {
        QFETCH(QString, pasted);
        StartEditor editor(QDateTime(QDate(2026, 11, 23), QTime(0, 5)));
        editor.setSelectedSection(QDateTimeEdit::YearSection);
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keySequence(&editor, QKeySequence::Paste);
        QTEST(editor.dateTime().toString(u"yyyy-MM-dd HH:mm"_s), "expected");
    }
};

TESSEL_TEST(TestStartEditor)
#include "tst_starteditor.moc"
