// SPDX-License-Identifier: MIT
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

class TestLogEntry : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void freshEntryIsEmptyButForItsIdentity()
    {
        LogEntry empty;
        QVERIFY(!empty.id.isNull());
        QCOMPARE(empty.type, 0);
        QVERIFY(!empty.userNote.has_value());
        QCOMPARE(empty.plainTextLine(), u" |  |  |  |  |  | "_s);
    }

    void identitiesAreRandomUuids()
    {
        QSet<QUuid> met;
        for (int i = 0; i < 10'000; ++i) {
            const QUuid id = LogEntry().id;
            QCOMPARE(id.version(), QUuid::Random);
            QCOMPARE(id.variant(), QUuid::DCE);
            met.insert(id);
        }
        QCOMPARE(met.size(), 10'000);
    }

    void plainTextLine_data()
    {
        QTest::addColumn<LogEntry>("entry");
        QTest::addColumn<QString>("line");
        QTest::newRow("log message")
            << sampleLogMessage()
            << u"2024-03-07 14:05:09.031250+0100 | error | sync | QuillonKit "
               u"| quillond | org.tessel.quillon | "
               "synchronised 3 of 4"_s;
        QTest::newRow("activity")
            << sampleActivity()
            << u"2024-03-07 14:05:10.000001+0100 |  |  | QuillonKit | quillond |  | check for updates"_s;
        QTest::newRow("boundary")
            << sampleBoundary()
            << u"2024-03-07 14:05:08.000000+0100 |  |  |  |  |  | === system boot"_s;
        QTest::newRow("signpost ends with its name")
            << sampleSignpost()
            << u"2024-03-07 14:05:11.500000+0100 |  | rendering | QuillonKit | quillond | org.tessel.demo | layout"_s;
    }

    void plainTextLine()
    {
        QFETCH(LogEntry, entry);
        QTEST(entry.plainTextLine(), "line");
    }
};

TESSEL_TEST(TestLogEntry)
#include "tst_logentry.moc"
