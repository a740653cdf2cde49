// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QTest>

using namespace logstore::writer;
using logstore::EntryKind;
using logstore::EventType;
using logstore::Level;
using logstore::SignpostType;
using logstore::StoreCategory;

namespace {

/// Wants the entries of one subsystem, and says so before their records are looked at.
class OfSubsystem final : public logstore::EntryFilter
{
public:
    explicit OfSubsystem(std::string wanted) : m_wanted(std::move(wanted)) {}
    bool matches(const logstore::Entry& entry) const override
    {
        return entry.subsystem() == m_wanted;
    }
    using EntryFilter::mayMatch;
    bool mayMatch(const logstore::ProcessFacts&,
                  std::string_view subsystem,
                  std::string_view) const override
    {
        return subsystem == m_wanted;
    }

private:
    std::string m_wanted;
};

} // namespace

/// Every kind of record, and what its entry tells.
class TestStoreRecords : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void levels_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<Level>("level");
        QTest::newRow("default") << int(DefaultMessage) << Level::Notice;
        QTest::newRow("info") << int(InfoMessage) << Level::Info;
        QTest::newRow("debug") << int(DebugMessage) << Level::Debug;
        QTest::newRow("error") << int(ErrorMessage) << Level::Error;
        QTest::newRow("fault") << int(FaultMessage) << Level::Fault;
        QTest::newRow("unknown") << 0x33 << Level::Notice;
    }

    void levels()
    {
        QFETCH(int, type);
        QFETCH(Level, level);
        for (const RecordKind kind : {RecordKind::Log, RecordKind::Trace}) {
            WrittenStore store;
            Record record = store.message(1, "hello");
            record.kind = kind;
            record.type = static_cast<std::uint8_t>(type);
            const Seen entry = only(store, record);
            QCOMPARE(entry.kind, EntryKind::Log);
            QCOMPARE(entry.level, level);
            QCOMPARE(entry.message, utf8("hello"));
        }
    }

    void storeCategories_data()
    {
        QTest::addColumn<int>("stream");
        QTest::addColumn<int>("ofChunk");
        QTest::addColumn<int>("ofRecord");
        QTest::addColumn<StoreCategory>("category");
        const auto row = [](const char* name, int stream, int chunk, int record,
                            StoreCategory category) {
            QTest::newRow(name) << stream << chunk << record << category;
        };
        row("none", PersistentStream, 0, 0, StoreCategory::LongTermAuto);
        row("1 day", PersistentStream, 0, 1, StoreCategory::LongTerm1);
        row("2 days", PersistentStream, 0, 2, StoreCategory::LongTerm3);
        row("3 days", SpecialStream, 0, 3, StoreCategory::LongTerm3);
        row("4 days", SpecialStream, 0, 4, StoreCategory::LongTerm7);
        row("7 days", SpecialStream, 0, 7, StoreCategory::LongTerm7);
        row("8 days", SpecialStream, 0, 8, StoreCategory::LongTerm14);
        row("14 days", SignpostStream, 0, 14, StoreCategory::LongTerm14);
        row("15 days", PersistentStream, 0, 15, StoreCategory::LongTerm30);
        row("30 days", PersistentStream, 0, 30, StoreCategory::LongTerm30);
        row("of the chunk", PersistentStream, 14, 0, StoreCategory::LongTerm14);
        row("the record's before the chunk's", PersistentStream, 14, 1, StoreCategory::LongTerm1);
        row("in memory", MemoryStream, 14, 1, StoreCategory::ShortTerm);
    }

    void storeCategories()
    {
        QFETCH(int, stream);
        QFETCH(int, ofChunk);
        QFETCH(int, ofRecord);
        QFETCH(StoreCategory, category);
        WrittenStore store;
        Record record = store.message(1, "hello");
        record.timeToLive = static_cast<std::uint8_t>(ofRecord);
        Firehose page = store.page({record});
        page.stream = static_cast<std::uint8_t>(stream);
        page.timeToLive = static_cast<std::uint8_t>(ofChunk);
        store.addChunks({page});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].storeCategory, category);
    }

    void activities_data()
    {
        QTest::addColumn<Record>("record");
        QTest::addColumn<EventType>("event");
        QTest::addColumn<quint64>("activity");
        QTest::addColumn<quint64>("parent");
        const auto row = [](const char* name, Record record, EventType event, quint64 activity,
                            quint64 parent) {
            record.kind = RecordKind::Activity;
            QTest::newRow(name) << record << event << activity << parent;
        };
        const auto create = EventType::ActivityCreate;
        row("alone", {.type = CreateActivity, .newActivity = 12}, create, 12, 0);
        row("under another one", {.type = CreateActivity, .activity = 5, .newActivity = 12}, create,
            12, 0);
        row("with a parent", {.type = CreateActivity, .newActivity = 12, .parentActivity = 6},
            create, 12, 6);
        row("with all",
            {.type = CreateActivity,
             .activity = 5,
             .newActivity = 12,
             .parentActivity = 6,
             .creator = 99},
            create, 12, 6);
        row("with its creator",
            {.type = CreateActivity, .activity = 5, .newActivity = 12, .creator = 99}, create, 12,
            0);
        row("unknown type", {.type = 0x42, .newActivity = 12}, create, 12, 0);
        row("user action", {.type = UserAction, .activity = 5}, EventType::UserAction, 5, 0);
        row("user action with a parent", {.type = UserAction, .activity = 5, .parentActivity = 6},
            EventType::UserAction, 5, 6);
        row("largest number", {.type = CreateActivity, .newActivity = 0x7fffffffffffffff}, create,
            0x7fffffffffffffff, 0);
    }

    void activities()
    {
        QFETCH(Record, record);
        QFETCH(EventType, event);
        QFETCH(quint64, activity);
        QFETCH(quint64, parent);
        WrittenStore store;
        record.format = store.message(0, "work").format;
        record.thread = 17;
        const Seen entry = only(store, record);
        QCOMPARE(entry.kind, EntryKind::Activity);
        QCOMPARE(entry.event, event);
        QCOMPARE(entry.activity, activity);
        QCOMPARE(entry.parentActivity, parent);
        QCOMPARE(entry.message, utf8("work"));
        QCOMPARE(entry.thread, std::uint64_t(17));
        QCOMPARE(entry.level, Level::Undefined);
    }

    void activityFieldsKeepTheirPlaces()
    {
        WrittenStore store;
        Record record{
            .kind = RecordKind::Activity, .type = CreateActivity, .activity = 5, .newActivity = 12};
        record.parentActivity = 6;
        record.creator = 99;
        record.format = inSharedCache(store.cache.offset(0, "in the cache"));
        record.format.largeOffset = 0;
        const Seen entry = only(store, record);
        QCOMPARE(entry.message, utf8("in the cache"));
        QCOMPARE(entry.senderPath, utf8("/usr/lib/libfirst.dylib"));
    }

    void messageFieldsKeepTheirPlaces()
    {
        // Every combination of the fields that may stand before the items.
        for (unsigned bits = 0; bits < 32; ++bits) {
            WrittenStore store;
            Record record = store.message(1, "%s %d");
            record.items = {text("text", bits & 1 ? Privacy::Private : Privacy::Public),
                            number<std::int32_t>(9)};
            if (bits & 2)
                record.activity = 7;
            if (bits & 4)
                record.subsystem = store.process.subsystem("org.example", "general");
            if (bits & 8)
                record.timeToLive = 14;
            if (bits & 16)
                record.backtrace = Backtrace{{testUuid(1)}, {{0, 100}, {0xff, 200}}};
            const Seen entry = only(store, record);
            QVERIFY2(entry.message == u"text 9", qPrintable(QString::number(bits)));
            QCOMPARE(entry.activity, std::uint64_t(bits & 2 ? 7 : 0));
            QCOMPARE(entry.subsystem, bits & 4 ? utf8("org.example") : QString());
            QCOMPARE(entry.category, bits & 4 ? utf8("general") : QString());
            QCOMPARE(entry.storeCategory,
                     bits & 8 ? StoreCategory::LongTerm14 : StoreCategory::LongTermAuto);
        }
    }

    void signposts_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<SignpostType>("expected");
        QTest::newRow("event") << (ProcessScope | SignpostEvent) << SignpostType::Event;
        QTest::newRow("begin") << (ThreadScope | IntervalBegin) << SignpostType::IntervalBegin;
        QTest::newRow("end") << (SystemScope | IntervalEnd) << SignpostType::IntervalEnd;
        QTest::newRow("unknown") << (ProcessScope | 3) << SignpostType::Undefined;
    }

    void signposts()
    {
        QFETCH(int, type);
        QFETCH(SignpostType, expected);
        WrittenStore store;
        Record record = store.message(1, "at %d");
        record.kind = RecordKind::Signpost;
        record.type = static_cast<std::uint8_t>(type);
        record.signpost = 0xeeeeb0b5b2b2eeee;
        record.name = nameAt(store.image.offset("Scrolled"));
        record.items = {number<std::int32_t>(6)};
        record.subsystem = store.process.subsystem("org.example", "PointsOfInterest");
        record.timeToLive = 1;
        record.activity = 3;
        const Seen entry = only(store, record);
        QCOMPARE(entry.kind, EntryKind::Signpost);
        QCOMPARE(entry.signpostType, expected);
        QCOMPARE(entry.signpost, std::uint64_t(0xeeeeb0b5b2b2eeee));
        QCOMPARE(entry.signpostName, utf8("Scrolled"));
        QCOMPARE(entry.message, utf8("at 6"));
        QCOMPARE(entry.category, utf8("PointsOfInterest"));
        QCOMPARE(entry.activity, std::uint64_t(3));
        QCOMPARE(entry.storeCategory, StoreCategory::LongTerm1);
    }

    void traces_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<std::vector<Item>>("items");
        QTest::addColumn<QString>("message");
        using Items = std::vector<Item>;
        QTest::newRow("no values") << QByteArray("nothing") << Items{} << utf8("nothing");
        QTest::newRow("one value")
            << QByteArray("%d") << Items{number<std::int32_t>(-3)} << utf8("-3");
        QTest::newRow("values of every size")
            << QByteArray("%d %d %d %lld")
            << Items{number<std::int8_t>(-1), number<std::int16_t>(-2), number<std::int32_t>(-3),
                     number<std::int64_t>(-4)}
            << utf8("-1 -2 -3 -4");
        QTest::newRow("fewer values than conversions")
            << QByteArray("%d %d") << Items{number<std::int32_t>(1)}
            << utf8("1 <decode: missing data>");
    }

    void traces()
    {
        QFETCH(QByteArray, format);
        QFETCH(std::vector<Item>, items);
        QFETCH(QString, message);
        WrittenStore store;
        Record record = store.message(1, format.toStdString());
        record.kind = RecordKind::Trace;
        record.type = ErrorMessage;
        record.items = items;
        const Seen entry = only(store, record);
        QCOMPARE(entry.kind, EntryKind::Log);
        QCOMPARE(entry.event, EventType::Trace);
        QCOMPARE(entry.level, Level::Error);
        QCOMPARE(entry.message, message);
        QCOMPARE(entry.subsystem, QString());
    }

    void losses()
    {
        WrittenStore store;
        Record record{.kind = RecordKind::Loss, .time = 500, .thread = 4};
        record.lost = {300, 18446744073709551615U, 12};
        const Seen entry = only(store, record);
        QCOMPARE(entry.kind, EntryKind::Other);
        QCOMPARE(entry.event, EventType::Loss);
        QCOMPARE(entry.message, utf8("lost >=12 unreliable messages from 300-18446744073709551615 "
                                     "(Mach continuous exact start-approx. end)"));
        QCOMPARE(entry.process, utf8("tester"));
        QCOMPARE(entry.sender + entry.format, QString());
        QCOMPARE(entry.time, WrittenStore::bootTime + 500);
    }

    void subsystemOfNumberZero_data()
    {
        QTest::addColumn<QByteArray>("subsystem");
        QTest::addColumn<QByteArray>("message"); // of the only entry
        QTest::newRow("the subsystem") << QByteArray("org.example") << QByteArray("with");
        QTest::newRow("none") << QByteArray("") << QByteArray("without");
    }

    void subsystemOfNumberZero()
    {
        QFETCH(QByteArray, subsystem);
        QFETCH(QByteArray, message);
        WrittenStore store;
        store.process.subsystems = {{0, "org.example", "general"}};
        Record with = store.message(1, "with");
        with.subsystem = 0;
        store.addRecords({with, store.message(2, "without")});
        const auto opened = logstore::Store::open(store.write());
        QVERIFY(opened);
        auto stream = opened->entries(WrittenStore::bootTime + 1,
                                      std::make_shared<OfSubsystem>(subsystem.toStdString()));
        const logstore::Entry* entry = stream.next();
        QVERIFY(entry);
        QCOMPARE(entry->composedMessage(), std::string_view(message.toStdString()));
        QVERIFY(!stream.next());
    }
};

TESSEL_TEST(TestStoreRecords)
#include "tst_storerecords.moc"
