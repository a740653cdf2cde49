// SPDX-License-Identifier: MIT
#include "mainwindow/textsearch.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

LogEntry entryWith(Text LogEntry::*field, const QString& text)
{
    LogEntry entry;
    entry.*field = text;
    return entry;
}

/// The needle in one field each; the fifth has it as its note.
QList<LogEntry> entries()
{
    QList<LogEntry> list{entryWith(&LogEntry::composedMessage, u"a Needle here"_s),
                         entryWith(&LogEntry::process, u"needle"_s),
                         entryWith(&LogEntry::sender, u"needle"_s),
                         entryWith(&LogEntry::subsystem, u"needle"_s),
                         LogEntry(),
                         entryWith(&LogEntry::category, u"needle"_s)};
    list[4].userNote = u"needle"_s;
    list[5].userNote = QString();
    return list;
}

} // namespace

class TestEntrySearch : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void searchesTheChosenField_data()
    {
        QTest::addColumn<int>("searchType");
        QTest::addColumn<int>("found");
        QTest::addRow("messages") << 0 << 0;
        QTest::addRow("processes") << 1 << 1;
        QTest::addRow("senders") << 2 << 2;
        QTest::addRow("subsystems") << 3 << 3;
        QTest::addRow("notes") << 4 << 4;
        QTest::addRow("beyond the last type") << 17 << 4;
        QTest::addRow("below the first type") << -1 << 4;
    }

    void searchesTheChosenField()
    {
        QFETCH(int, searchType);
        QFETCH(int, found);
        const QList<LogEntry> list = entries();
        const QList<LogEntry> results = entriesFound(list, searchType, u"needle"_s);
        QCOMPARE(results.size(), 1);
        QCOMPARE(results.first().id, list.at(found).id);
    }

    void keepsOrderAndEntries()
    {
        QList<LogEntry> list{entryWith(&LogEntry::sender, u"backupd"_s),
                             entryWith(&LogEntry::sender, u"kernel"_s),
                             entryWith(&LogEntry::sender, u"backupd-helper"_s)};
        list[2].userNote = u"kept"_s;
        const QList<LogEntry> results = entriesFound(list, 2, u"BACKUPD"_s);
        QCOMPARE(results.size(), 2);
        QCOMPARE(results.at(0).id, list.at(0).id);
        QCOMPARE(results.at(1).id, list.at(2).id);
        QCOMPARE(results.at(1).userNote->toString(), u"kept"_s);
    }
};

TESSEL_TEST(TestEntrySearch)
#include "tst_entrysearch.moc"
