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

    /// Where clocks are put forward at two o'clock on the day shown.
    static void whatIsHalfTypedIsCompleted_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::addRow("minute") << 14 << u"5"_s << u"2026-03-29 01:05"_s;
        QTest::addRow("month") << 5 << u"1"_s << u"2026-01-29 01:13"_s;
        QTest::addRow("month that is none") << 5 << u"0"_s << u"2026-03-29 01:13"_s;
        QTest::addRow("year") << 0 << u"202"_s << u"2026-03-29 01:13"_s;
        QTest::addRow("an hour that was skipped") << 11 << u"02"_s << u"2026-03-29 03:13"_s;
        QTest::addRow("an hour half typed and skipped") << 11 << u"2"_s << u"2026-03-29 03:13"_s;
        QTest::addRow("digits of another script") << 14 << u"٤٢"_s << u"2026-03-29 01:42"_s;
    }

    static void whatIsHalfTypedIsCompleted()
    {
        QFETCH(int, cursor);
        QFETCH(QString, typed);
        const auto zone = qScopeGuard([] { qputenv("TZ", "UTC"); });
        qputenv("TZ", "Europe/Berlin");
        StartEditor editor(QDateTime(QDate(2026, 3, 29), QTime(1, 13)));
        auto* const text = editor.findChild<QLineEdit*>();
        text->setCursorPosition(cursor);
        for (const QChar key : typed)
            QTest::sendKeyEvent(QTest::Click, &editor, Qt::Key_unknown, QString(key), {});
        editor.interpretText();
        QTEST(text->text(), "expected");
        QTEST(editor.dateTime().toString(u"yyyy-MM-dd HH:mm"_s), "expected");
    }

    static void digitsAreAscii()
    {
        const auto locale = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
        QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
        const StartEditor editor(QDateTime(QDate(2026, 3, 29), QTime(1, 13)));
        QCOMPARE(editor.text(), u"2026-03-29 01:13"_s);
    }

    static void pasteSetsTheWholeStart_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("seconds");
        const QString before = u"2026-11-23 00:05"_s;
        QTest::addRow("the time of a row") << u"2024-12-04 11:44:57.832532+0000 EndpointSecurity"_s
                                           << u"2024-12-04 11:44"_s << u"57"_s;
        QTest::addRow("of another zone")
            << u"2024-12-04 00:44:07.832532+0130"_s << u"2024-12-03 23:14"_s << u"07"_s;
        QTest::addRow("west") << u"2024-12-04 11:44-08:00"_s << u"2024-12-04 19:44"_s << QString();
        QTest::addRow("ISO, with blanks around")
            << u" 2024-12-04T11:44:57Z\n"_s << u"2024-12-04 11:44"_s << u"57"_s;
        QTest::addRow("a day that is none") << u"2024-02-30 11:44"_s << before << QString();
        QTest::addRow("the year alone, where it is selected")
            << u"2019"_s << u"2019-11-23 00:05"_s << QString();
        QTest::addRow("no time") << u"yesterday"_s << before << QString();
    }

    static void pasteSetsTheWholeStart()
    {
        QFETCH(QString, pasted);
        StartEditor editor(QDateTime(QDate(2026, 11, 23), QTime(0, 5)));
        QString seconds;
        connect(&editor, &StartEditor::secondsPasted,
                [&seconds](const QString& told) { seconds = told; });
        editor.setSelectedSection(QDateTimeEdit::YearSection);
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keySequence(&editor, QKeySequence::Paste);
        QTEST(editor.dateTime().toString(u"yyyy-MM-dd HH:mm"_s), "expected");
        QTEST(seconds, "seconds");
    }
};

TESSEL_TEST(TestStartEditor)
#include "tst_starteditor.moc"
