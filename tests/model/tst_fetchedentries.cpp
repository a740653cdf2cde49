// SPDX-License-Identifier: MIT
#include "fetchfixture.h"
#include "model/entrylistbuilder.h"
#include "support/testcase.h"

#include <limits>

using namespace Qt::StringLiterals;

/// What a fetch makes of each kind of entry.
class TestFetchedEntries : public FetchFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsOfEachKind_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("fields"); // of the kind on; identity and note aside
        QTest::newRow("boundary") << 0
                                  << u"3|||=== system boot: B0075EED-0000-4000-8000-000000000001|"
                                     "2024-03-07 14:05:00.000000+0100|||||||||1||"_s;
        QTest::newRow("log message") << 1
                                     << u"1||sync|hello|2024-03-07 14:05:01.000001+0100|error||"
                                        "quillond|311|quillond||||3|org.tessel.quillon|90210"_s;
        QTest::newRow("log message in an activity")
            << 2
            << u"1|42|sync|inside|2024-03-07 14:05:02.999999+0100|notice||"
               "quillond|311|quillond||||3|org.tessel.quillon|90210"_s;
        QTest::newRow("activity") << 3
                                  << u"2|42||update|2024-03-07 14:05:03.000000+0100||0|"
                                     "quillond|311|quillond||||3||90210"_s;
        QTest::newRow("activity with a parent")
            << 4
            << u"2|43||sub-update|2024-03-07 14:05:04.000000+0100||"
               "42|quillond|311|quillond||||3||90210"_s;
        QTest::newRow("signpost")
            << 5
            << u"4|0|sync||2024-03-07 14:05:05.000000+0100|||quillond|311|quillond|"
               "18446744073709551615|layout|1|3|org.tessel.quillon|90210"_s;
    }

    void fieldsOfEachKind()
    {
        SmallStore store(startTime);
        store.log(startTime + second + 1999, "hello", logstore::writer::ErrorMessage);
        store.log(startTime + 3 * second - 1, "inside", logstore::writer::DefaultMessage, 42);
        store.activity(startTime + 3 * second, "update", 42);
        store.activity(startTime + 4 * second, "sub-update", 43, 42);
        store.signpost(startTime + 5 * second, "layout", std::numeric_limits<std::uint64_t>::max());
        write(store);
        QVERIFY(fetch(u"0"_s, QString(), 60));
        QCOMPARE(m_logger->logList().size(), 6);
        QFETCH(int, row);
        const LogEntry& entry = m_logger->logList().at(row);
        QStringList fields{QString::number(entry.type)};
        for (const EntryMember& member : entryMembers)
            if (member.text)
                fields.append((entry.*member.text).toString());
        QTEST(fields.join(u'|'), "fields");
        QVERIFY(!entry.userNote);
    }

    void levels()
    {
        using namespace logstore::writer;
        SmallStore store(startTime - second);
        qint64 time = startTime;
        for (const std::uint8_t type :
             {DebugMessage, InfoMessage, DefaultMessage, ErrorMessage, FaultMessage})
            store.log(time += second, "message", type);
        store.loss(time += second, 3);
        write(store);
        QVERIFY(fetch(u"0"_s, QString(), 60));
        QStringList levels;
        for (const LogEntry& entry : m_logger->logList())
            levels.append(entry.level.toString());
        QCOMPARE(levels, (QStringList{u"debug"_s, u"info"_s, u"notice"_s, u"error"_s, u"fault"_s,
                                      QString()}));
        const LogEntry& other = m_logger->logList().last();
        QCOMPARE(other.type, qint64(OtherEntry));
        QVERIFY(!other.composedMessage.isEmpty());
        QVERIFY(other.process.isEmpty() && other.threadIdentifier.isEmpty());
    }

    void identitiesAreFresh()
    {
        writeSeconds(2);
        QVERIFY(fetch(u"0"_s, QString(), 60));
        const QUuid first = m_logger->logList().at(0).id;
        QVERIFY(first != m_logger->logList().at(1).id);
        QVERIFY(fetch(u"0"_s, QString(), 60));
        QVERIFY(m_logger->logList().at(0).id != first);
    }
};

TESSEL_TEST(TestFetchedEntries)
#include "tst_fetchedentries.moc"
