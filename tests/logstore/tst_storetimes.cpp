// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "platform/logstore/trace/bootclock.h"
#include "support/testcase.h"

#include <QTest>

#include <algorithm>

using namespace logstore::writer;
using logstore::EntryKind;

namespace {

constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t at = WrittenStore::bootTime;

/// `time: message` lines, times in seconds after the boot.
QString timeline(const std::vector<Seen>& entries)
{
    QStringList lines;
    for (const Seen& each : entries)
        lines += QStringLiteral("%1: %2").arg(double(each.time - at) / second).arg(each.message);
    return lines.join(QLatin1Char('\n'));
}

std::vector<Seen> boundariesOf(std::vector<Seen> entries)
{
    std::erase_if(entries, [](const Seen& each) { return each.kind != EntryKind::Boundary; });
    return entries;
}

/// Where they begin in a catalog with two identifiers and one process of 56 bytes.
constexpr std::size_t subChunks = 24 + 2 * 16 + 56;

constexpr auto bootB0 = "=== system boot: B0B0B0B0-B0B0-B0B0-B0B0-B0B0B0B0B0B0";
constexpr auto adjusted = "=== system wallclock time adjusted";

} // namespace

/// Times, order and boundaries.
class TestStoreTimes : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void wallTimeFollowsTheClock_data()
    {
        QTest::addColumn<Boot>("boot");
        QTest::addColumn<quint64>("continuous");
        QTest::addColumn<qint64>("wall");

        const auto boot = [](std::vector<Sync> syncs) {
            return Boot{testUuid(0xb0), 1, 1, at, std::move(syncs)};
        };
        const auto ticks = [](std::int64_t wall, std::vector<Sync> syncs) {
            return Boot{testUuid(0xb0), 125, 3, wall, std::move(syncs)};
        };
        const std::vector<Sync> back{{100, at + 100}, {200, at - 5000}};
        const std::vector<Sync> forth{{100, at + 100}, {200, at + 9000}};

        QTest::newRow("no sync record") << boot({}) << quint64(7) << qint64(at + 7);
        QTest::newRow("before the first sync record")
            << boot({{100, at + 5000}}) << quint64(99) << qint64(at + 99);
        QTest::newRow("at a sync record")
            << boot({{100, at + 5000}}) << quint64(100) << qint64(at + 5000);
        QTest::newRow("after a sync record")
            << boot({{100, at + 5000}}) << quint64(103) << qint64(at + 5003);
        QTest::newRow("just before the clock steps back")
            << boot(back) << quint64(199) << qint64(at + 199);
        QTest::newRow("after the clock stepped back")
            << boot(back) << quint64(201) << qint64(at - 4999);
        QTest::newRow("just before the clock steps forth")
            << boot(forth) << quint64(199) << qint64(at + 199);
        QTest::newRow("after the clock stepped forth")
            << boot(forth) << quint64(201) << qint64(at + 9001);
        QTest::newRow("sync records out of order")
            << boot({{200, at + 9000}, {100, at + 100}}) << quint64(201) << qint64(at + 9001);
        QTest::newRow("two sync records of one time, the later one counts")
            << boot({{100, at + 1}, {100, at + 2}}) << quint64(100) << qint64(at + 2);
        QTest::newRow("time of the boot not known, before the first sync record")
            << Boot{testUuid(0xb0), 1, 1, 0, {{100, at}}} << quint64(40) << qint64(at - 60);
        QTest::newRow("nothing known but the boot")
            << Boot{testUuid(0xb0), 1, 1, 0, {}} << quint64(40) << qint64(40);
        QTest::newRow("ticks of 125/3 ns")
            << ticks(at, {}) << quint64(24'000'001) << qint64(at + second + 41);
        QTest::newRow("ticks before the sync record, toward zero")
            << ticks(0, {{100, at}}) << quint64(99) << qint64(at - 41);
        QTest::newRow("real machine") << ticks(0, {{1989901642270, 1733312067939447000}})
                                      << quint64(2005019076310) << qint64(1733312697832532000);
        QTest::newRow("numerator of zero")
            << Boot{testUuid(0xb0), 0, 1, at, {}} << quint64(7) << qint64(at + 7);
        QTest::newRow("denominator of zero")
            << Boot{testUuid(0xb0), 1, 0, at, {}} << quint64(7) << qint64(at + 7);
    }

    void wallTimeFollowsTheClock()
    {
        QFETCH(Boot, boot);
        QFETCH(quint64, continuous);
        QFETCH(qint64, wall);
        WrittenStore store;
        store.boot = boot;
        store.addRecords({store.message(continuous, "hello")});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].time, wall);
        QCOMPARE(entries[0].continuousTime, continuous);
    }

    void unknownBootCountsFromTheHeader()
    {
        WrittenStore store;
        TraceFile file = store.trace({{{store.page({store.message(1000, "hello")})}}});
        file.header.boot = testUuid(0xbb);
        file.header.wallTime = at + 5 * second + 123'456'000;
        file.header.continuousTime = 400;
        store.files.add(persist, file);
        const auto entries = store.all();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].time, at + 5 * second + 123'456'600);
    }

    void bootsFollowOneAnother()
    {
        WrittenStore store;
        const Boot second1{testUuid(0xb1), 1, 1, at + 60 * second, {}};
        store.files.add("0000000000000001.timesync", {store.boot, second1});
        TraceFile later = store.trace({{{store.page({store.message(1 * second, "second boot")})}}});
        later.header.boot = second1.uuid;
        store.files.add(persist, later);
        store.files.add("Persist/0000000000000002.tracev3",
                        store.trace({{{store.page({store.message(30 * second, "first boot")})}}}));
        QCOMPARE(
            timeline(store.all()),
            lines({"0: === system boot: B0B0B0B0-B0B0-B0B0-B0B0-B0B0B0B0B0B0", "30: first boot",
                   "60: === system boot: B1B1B1B1-B1B1-B1B1-B1B1-B1B1B1B1B1B1",
                   "61: second boot"}));
    }

    void bootGoesOnInTheNextTimeFile()
    {
        WrittenStore store;
        Boot again = store.boot;
        again.wallTime += 77 * second; // the first boot record counts
        again.syncs = {{50 * std::uint64_t(second), at + 51 * second}};
        store.files.add("0000000000000001.timesync", {store.boot});
        store.files.add("0000000000000002.timesync", std::vector<Boot>{again});
        store.addRecords(
            {store.message(10 * second, "before"), store.message(60 * second, "after")});
        QCOMPARE(timeline(store.entries()), lines({"10: before", "61: after"}));
    }

    void laterHeaderChangesTheBoot()
    {
        WrittenStore store;
        const Boot other{testUuid(0xb1), 1, 1, at + 60 * second, {}};
        store.files.add("0000000000000001.timesync", {store.boot, other});
        TraceFile file = store.trace({{{store.page({store.message(1 * second, "first boot")})}}});
        Section section =
            store.trace({{{store.page({store.message(1 * second, "second boot")})}}}).sections[0];
        section.header = Header{.boot = other.uuid};
        file.sections.push_back(section);
        store.files.add(persist, file);
        QCOMPARE(timeline(store.entries()), lines({"1: first boot", "61: second boot"}));
    }

    void entriesStayInOrderWhenTheClockStepsBack()
    {
        WrittenStore store;
        store.boot.syncs = {{20 * std::uint64_t(second), at + 14 * second},
                            {30 * std::uint64_t(second), at + 40 * second}};
        std::vector<ChunkSet> sets;
        for (std::uint64_t time : {12, 18, 19, 21, 23, 29, 31})
            sets.push_back({{store.page({store.message(time * second, std::to_string(time))})}});
        // One set lies across the step, so that neither of its ends is its smallest time.
        sets.push_back({{store.page(
            {store.message(13 * second, "wide"), store.message(22 * second, "wide too")})}});
        store.files.add(persist, store.trace(sets));
        QCOMPARE(timeline(store.entries()),
                 lines({"12: 12", "13: wide", "15: 21", "16: wide too", "17: 23", "18: 18",
                        "19: 19", "23: 29", "41: 31"}));
    }

    void foldersAreMerged()
    {
        WrittenStore store;
        const auto file = [&](std::initializer_list<std::uint64_t> times, const char* name) {
            std::vector<ChunkSet> sets;
            for (const std::uint64_t time : times)
                sets.push_back(
                    {{store.page({store.message((time + 3) * second, std::string(name) + " end"),
                                  store.message(time * second, name)})}});
            return store.trace(sets);
        };
        store.files.add(persist, file({20, 1, 10}, "Persist"));
        store.files.add("Special/0000000000000001.tracev3", file({2, 11}, "Special"));
        store.files.add("Signpost/0000000000000001.tracev3", file({12}, "Signpost"));
        store.files.add("HighVolume/0000000000000001.tracev3", file({3}, "HighVolume"));
        store.files.add("logdata.LiveData.tracev3", file({21}, "live"));
        QCOMPARE(timeline(store.entries()),
                 lines({"1: Persist", "2: Special", "3: HighVolume", "4: Persist end",
                        "5: Special end", "6: HighVolume end", "10: Persist", "11: Special",
                        "12: Signpost", "13: Persist end", "14: Special end", "15: Signpost end",
                        "20: Persist", "21: live", "23: Persist end", "24: live end"}));
    }

    void equalTimesKeepTheirOrder()
    {
        WrittenStore store;
        const auto set = [&](const char* one, const char* other) {
            return ChunkSet{{store.page({store.message(5, one), store.message(5, other)}),
                             store.page({store.message(5, (std::string(one) + "'").c_str())})}};
        };
        store.files.add("logdata.LiveData.tracev3", store.trace({set("live a", "live b")}));
        store.files.add("Special/0000000000000001.tracev3",
                        store.trace({set("special a", "special b")}));
        store.files.add("Persist/0000000000000002.tracev3",
                        store.trace({set("later a", "later b")}));
        store.files.add(persist, store.trace({set("a", "b"), set("c", "d")}));
        QCOMPARE(store.messages(),
                 lines({"a", "b", "a'", "c", "d", "c'", "later a", "later b", "later a'",
                        "special a", "special b", "special a'", "live a", "live b", "live a'"}));
    }

    void readingFromATimeGivesTheRest()
    {
        WrittenStore store;
        store.boot.syncs = {{40, at + 20}, {70, at + 95}};
        std::vector<ChunkSet> sets;
        for (std::uint64_t time = 0; time < 100; time += 5)
            sets.push_back(
                {{store.page({store.message((time * 37) % 100, "x"), store.message(time, "y")})}});
        store.files.add(persist, store.trace(sets));
        const auto all = store.all();
        QVERIFY(std::is_sorted(all.begin(), all.end(),
                               [](const Seen& a, const Seen& b) { return a.time < b.time; }));
        QCOMPARE(all.size(), std::size_t(40 + 3));
        for (std::int64_t from = at - 1; from < at + 130; ++from) {
            const auto expected = std::count_if(
                all.begin(), all.end(), [&](const Seen& each) { return each.time >= from; });
            const auto rest = store.all(from);
            QCOMPARE(std::ptrdiff_t(rest.size()), expected);
            QCOMPARE(timeline(rest), timeline({all.end() - expected, all.end()}));
        }
    }

    void boundariesShowWhatTheEntriesSpan_data()
    {
        QTest::addColumn<std::vector<Sync>>("syncs");
        QTest::addColumn<qint64>("bootWall");
        QTest::addColumn<QString>("expected");

        using Syncs = std::vector<Sync>;
        constexpr auto s = std::uint64_t(second);
        const QString boot = QStringLiteral("0: ") + QString::fromUtf8(bootB0);
        const auto sync = [](int time) {
            return QStringLiteral("\n%1: %2").arg(time).arg(QString::fromUtf8(adjusted));
        };
        QTest::newRow("boot alone") << Syncs{} << qint64(at) << boot;
        QTest::newRow("sync record before the first entry")
            << Syncs{{9 * s, at + 9 * second}} << qint64(at) << boot;
        QTest::newRow("sync record at the first entry")
            << Syncs{{10 * s, at + 10 * second}} << qint64(at) << boot + sync(10);
        QTest::newRow("sync record between entries")
            << Syncs{{15 * s, at + 16 * second}} << qint64(at) << boot + sync(16);
        QTest::newRow("sync record at the last entry")
            << Syncs{{20 * s, at + 20 * second}} << qint64(at) << boot + sync(20);
        QTest::newRow("sync record after the last entry")
            << Syncs{{20 * s + 1, at + 20 * second}} << qint64(at) << boot;
        QTest::newRow("boot time not known")
            << Syncs{{15 * s, at + 15 * second}} << qint64(0) << sync(15).mid(1);
    }

    void boundariesShowWhatTheEntriesSpan()
    {
        QFETCH(std::vector<Sync>, syncs);
        QFETCH(qint64, bootWall);
        QFETCH(QString, expected);
        WrittenStore store;
        store.boot.syncs = syncs;
        store.boot.wallTime = bootWall;
        // The set that ends last is not the last one.
        store.files.add(persist,
                        store.trace({{{store.page({store.message(20 * second, "last")})}},
                                     {{store.page({store.message(10 * second, "first")})}}}));
        const auto boundaries = boundariesOf(store.all());
        QCOMPARE(timeline(boundaries), expected);
        for (const Seen& each : boundaries) {
            QCOMPARE(each.event, logstore::EventType::TimeSync);
            QCOMPARE(each.storeCategory, logstore::StoreCategory::Metadata);
            QCOMPARE(each.process + each.sender + each.subsystem + each.category + each.format,
                     QString());
            QCOMPARE(each.processIdentifier, 0);
        }
    }

    void boundaryComesBeforeAnEntryOfItsTime()
    {
        WrittenStore store;
        store.boot.syncs = {{10, at + 10}};
        store.addRecords({store.message(10, "entry"), store.message(0, "first")});
        QCOMPARE(timeline(store.all()).section(QLatin1Char('\n'), 0, 0),
                 QStringLiteral("0: ") + QString::fromUtf8(bootB0));
        const auto all = store.all();
        QCOMPARE(all.size(), std::size_t(4));
        QCOMPARE(all[2].message, QString::fromUtf8(adjusted));
        QCOMPARE(all[3].message, QStringLiteral("entry"));
    }

    void rangesHoldEveryMoment()
    {
        constexpr std::uint64_t length = 12;
        for (const std::int64_t step : {-7, 5}) {
            const logstore::BootClock clock(testUuid(1), 1, 1, {0, 100},
                                            {{3, 100 + 3 + step}, {6, 100}, {9, 109 + 3 * step}});
            for (std::uint64_t first = 0; first < length; ++first) {
                std::int64_t earliest = clock.wallTime(first);
                std::int64_t latest = earliest;
                for (std::uint64_t last = first; last < length; ++last) {
                    earliest = std::min(earliest, clock.wallTime(last));
                    latest = std::max(latest, clock.wallTime(last));
                    const logstore::TimeRange range = clock.wallRange(first, last);
                    QCOMPARE(range.earliest, earliest);
                    QCOMPARE(range.latest, latest);
                }
            }
        }
    }

    void lyingIndexLosesNothing_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::newRow("fewer sub-chunks than chunk sets") << put<std::uint16_t>(8, 1);
        QTest::newRow("more sub-chunks than chunk sets") << put<std::uint16_t>(8, 3);
        QTest::newRow("no sub-chunks") << put<std::uint16_t>(8, 0);
        QTest::newRow("earliest after latest") << put<std::uint64_t>(subChunks, UINT64_MAX);
        QTest::newRow("unknown compression") << put<std::uint32_t>(subChunks + 20, 0x200);
        QTest::newRow("sub-chunks outside the catalog") << put<std::uint16_t>(6, 0xfff8);
        QTest::newRow("process indexes without end")
            << put<std::uint32_t>(subChunks + 24, 0xffffffff);
    }

    void lyingIndexLosesNothing()
    {
        QFETCH(Edit, edit);
        WrittenStore store;
        TraceFile file = store.trace({{{store.page({store.message(20 * second, "second")})}},
                                      {{store.page({store.message(10 * second, "first")})}}});
        file.sections[0].editCatalog = edit;
        store.files.add(persist, file);
        QCOMPARE(timeline(store.entries()), lines({"10: first", "20: second"}));
        QCOMPARE(timeline(store.entries(at + 15 * second)), lines({"20: second"}));
    }

    void endTimeIsThatOfTheLastEntry_data()
    {
        QTest::addColumn<Edit>("editCatalog");
        QTest::newRow("as it is") << Edit([](Bytes&) {});
        QTest::newRow("a catalog that names a later one")
            << put<std::uint8_t>(subChunks + 8 + 7, 0x10);
    }

    void endTimeIsThatOfTheLastEntry()
    {
        QFETCH(Edit, editCatalog);
        WrittenStore store;
        const Oversize nobodys{.process = store.process.key, .time = 99, .reference = 1};
        TraceFile file = store.trace(
            {{{store.page({store.message(3, "early")})}},
             {{store.page({store.message(20, "last"), store.message(10, "first")}), nobodys}}});
        file.sections[0].editCatalog = editCatalog;
        store.files.add(persist, file);
        const auto opened = logstore::Store::open(store.write());
        QVERIFY(opened);
        QCOMPARE(opened->endTime(), at + 20);
    }
};

TESSEL_TEST(TestStoreTimes)
#include "tst_storetimes.moc"
