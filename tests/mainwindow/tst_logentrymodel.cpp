// SPDX-License-Identifier: MIT
#include "mainwindow/logentrymodel.h"
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class TestLogEntryModel : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_tester.reset();
        m_model = std::make_unique<LogEntryModel>();
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }

    void followsTheLists()
    {
        QCOMPARE(m_model->rowCount(), 0);
        const QList<LogEntry> entries = sampleEntries();
        m_model->show(entries);
        QCOMPARE(m_model->rowCount(), entries.size());
        QCOMPARE(m_model->entry(1).id, entries.at(1).id);
        QCOMPARE(m_model->rowCount(m_model->index(0)), 0);
        const QList<LogEntry> none;
        m_model->show(none);
        QCOMPARE(m_model->rowCount(), 0);
    }

    void editsKeepTheRows()
    {
        const QList<LogEntry> entries = sampleEntries();
        QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);
        m_model->entriesEdited();
        QVERIFY(changed.isEmpty());
        m_model->show(entries);
        m_model->entriesEdited();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 0);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), entries.size() - 1);
    }

    void formIsARowsMatter()
    {
        const QList<LogEntry> entries = sampleEntries();
        m_model->show(entries);
        QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);
        m_model->setFullMode(false);
        QVERIFY(changed.isEmpty());
        m_model->setFullMode(true);
        QCOMPARE(changed.size(), 1);
        QVERIFY(m_model->messageRow(0).fullMode);
    }

    void speaksWholeLines()
    {
        const QList<LogEntry> entries{sampleLogMessage()};
        m_model->show(entries);
        QCOMPARE(
            m_model->index(0).data(Qt::AccessibleTextRole).toString(),
            u"2024-03-07 14:05:09.031250+0100, QuillonKit, org.tessel.quillon, synchronised 3 of 4"_s);
        m_model->setFullMode(true);
        QVERIFY(m_model->index(0)
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .contains(u", log message, "_s));
    }

    void toolTips_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("note");
        QTest::addColumn<QString>("expected");
        const QString frame = u"<p style=\"white-space:pre-wrap\">%1</p>"_s;
        QTest::addRow("lines stay lines") << u"one\ntwo"_s << QString() << frame.arg(u"one\ntwo"_s);
        QTest::addRow("markup is text") << u"<b>&"_s << QString() << frame.arg(u"&lt;b&gt;&amp;"_s);
        QTest::addRow("with its note") << u"m"_s << u"n"_s << frame.arg(u"m\n\n📝 n"_s);
        QTest::addRow("nothing to show") << QString() << QString() << QString();
        QTest::addRow("of extreme length")
            << QString(50'000, u'm') << QString() << frame.arg(QString(10'000, u'm') + u" …"_s);
    }

    void toolTips()
    {
        QFETCH(QString, message);
        QFETCH(QString, note);
        QFETCH(QString, expected);
        LogEntry entry;
        entry.composedMessage = message;
        entry.userNote = note;
        const QList<LogEntry> entries{entry};
        m_model->show(entries);
        QCOMPARE(m_model->index(0).data(Qt::ToolTipRole).toString(), expected);
    }

private:
    std::unique_ptr<LogEntryModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

TESSEL_TEST(TestLogEntryModel)
#include "tst_logentrymodel.moc"
