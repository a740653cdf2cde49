// SPDX-License-Identifier: MIT
#include "fetchfixture.h"

#include <limits>

using namespace Qt::StringLiterals;

/// What a fetch makes of each kind of entry.
class TestFetchedEntries : public FetchFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsOfEachKind_data();
    void fieldsOfEachKind();
    void levels();
    void identitiesAreFresh();
};

void TestFetchedEntries::fieldsOfEachKind_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("fields"); // in the order of the record, identity and note aside
    QTest::newRow("boundary") << 0
                              << QStringList{
                                     u"3"_s,
                                     {},
                                     {},
                                     u"=== system boot: B0075EED-0000-4000-8000-000000000001"_s,
                                     u"2024-03-07 14:05:00.000000+0100"_s,
                                     {},
                                     {},
                                     {},
                                     {},
                                     {},
                                     {},
                                     {},
                                     {},
                                     u"1"_s,
                                     {},
                                     {}};
    QTest::newRow("log message") << 1
                                 << QStringList{u"1"_s,
                                                {},
                                                u"sync"_s,
                                                u"hello"_s,
                                                u"2024-03-07 14:05:01.000001+0100"_s,
                                                u"error"_s,
                                                {},
                                                u"quillond"_s,
                                                u"311"_s,
                                                u"quillond"_s,
                                                {},
                                                {},
                                                {},
                                                u"3"_s,
                                                u"org.tessel.quillon"_s,
                                                u"90210"_s};
    QTest::newRow("log message in an activity") << 2
                                                << QStringList{u"1"_s,
                                                               u"42"_s,
                                                               u"sync"_s,
                                                               u"inside"_s,
                                                               u"2024-03-07 14:05:02.999999+0100"_s,
                                                               u"notice"_s,
                                                               {},
                                                               u"quillond"_s,
                                                               u"311"_s,
                                                               u"quillond"_s,
                                                               {},
                                                               {},
                                                               {},
                                                               u"3"_s,
                                                               u"org.tessel.quillon"_s,
                                                               u"90210"_s};
    QTest::newRow("activity") << 3
                              << QStringList{u"2"_s,
                                             u"42"_s,
                                             {},
                                             u"update"_s,
                                             u"2024-03-07 14:05:03.000000+0100"_s,
                                             {},
                                             u"0"_s,
                                             u"quillond"_s,
                                             u"311"_s,
                                             u"quillond"_s,
                                             {},
                                             {},
                                             {},
                                             u"3"_s,
                                             {},
                                             u"90210"_s};
    QTest::newRow("activity with a parent") << 4
                                            << QStringList{u"2"_s,
                                                           u"43"_s,
                                                           {},
                                                           u"sub-update"_s,
                                                           u"2024-03-07 14:05:04.000000+0100"_s,
                                                           {},
                                                           u"42"_s,
                                                           u"quillond"_s,
                                                           u"311"_s,
                                                           u"quillond"_s,
                                                           {},
                                                           {},
                                                           {},
                                                           u"3"_s,
                                                           {},
                                                           u"90210"_s};
    QTest::newRow("signpost") << 5
                              << QStringList{u"4"_s,
                                             u"0"_s,
                                             u"sync"_s,
                                             {},
                                             u"2024-03-07 14:05:05.000000+0100"_s,
                                             {},
                                             {},
                                             u"quillond"_s,
                                             u"311"_s,
                                             u"quillond"_s,
                                             u"18446744073709551615"_s,
                                             u"layout"_s,
                                             u"1"_s,
                                             u"3"_s,
                                             u"org.tessel.quillon"_s,
                                             u"90210"_s};
}

void TestFetchedEntries::fieldsOfEachKind()
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
    for (const Text* field :
         {&entry.activityIdentifier, &entry.category, &entry.composedMessage, &entry.date,
          &entry.level, &entry.parentActivityIdentifier, &entry.process, &entry.processIdentifier,
          &entry.sender, &entry.signpostIdentifier, &entry.signpostName, &entry.signpostType,
          &entry.storeCategory, &entry.subsystem, &entry.threadIdentifier})
        fields.append(field->toString());
    QTEST(fields, "fields");
    QVERIFY(!entry.userNote);
}

void TestFetchedEntries::levels()
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
    QCOMPARE(levels,
             (QStringList{u"debug"_s, u"info"_s, u"notice"_s, u"error"_s, u"fault"_s, QString()}));
    const LogEntry& other = m_logger->logList().last();
    QCOMPARE(other.type, qint64(OtherEntry));
    QVERIFY(!other.composedMessage.isEmpty());
    QVERIFY(other.process.isEmpty() && other.threadIdentifier.isEmpty());
}

void TestFetchedEntries::identitiesAreFresh()
{
    writeSeconds(2);
    QVERIFY(fetch(u"0"_s, QString(), 60));
    const QUuid first = m_logger->logList().at(0).id;
    QVERIFY(first != m_logger->logList().at(1).id);
    QVERIFY(fetch(u"0"_s, QString(), 60));
    QVERIFY(m_logger->logList().at(0).id != first);
}

QTEST_GUILESS_MAIN(TestFetchedEntries)
#include "tst_fetchedentries.moc"
