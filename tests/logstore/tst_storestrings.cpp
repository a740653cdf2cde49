// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QTest>

using namespace logstore::writer;

namespace {

constexpr auto noUuid = "<compose failure [UUID]>";
constexpr auto noSharedUuid = "<compose failure [shared UUID]>";
constexpr auto noLog = "<compose failure [missing precomposed log]>";
constexpr auto noOffset = "<Invalid shared cache format string offset>";
constexpr auto testerPath = "/usr/bin/tester";
constexpr auto otherPath = "/usr/lib/other.dylib";
constexpr auto extensionPath = "/Extensions/Extension";
constexpr auto firstPath = "/usr/lib/libfirst.dylib";
constexpr auto middlePath = "/usr/lib/libmiddle.dylib";
constexpr auto farPath = "/usr/lib/libfar.dylib";

constexpr std::uint64_t load = 0xfe0001000000;
constexpr std::uint32_t nearLoad = 0x5000; ///< so low that an address can equal a string's offset
constexpr std::uint32_t loadSize = 0x800;
constexpr std::uint64_t middleStart = 0x9000'0000;
constexpr std::uint64_t farStart = 0x1'a000'0000;
constexpr std::uint32_t imageSize = 0x10000;

UuidText otherImage()
{
    return {testUuid(0x12), otherPath, {}};
}

UuidText extensionImage()
{
    return {testUuid(0x13), extensionPath, {}};
}

/// A store with a string in each place that a reference can name.
class StringStore : public WrittenStore
{
public:
    StringStore()
    {
        inTester = image.offset("in tester");
        UuidText other = otherImage();
        inOther = other.offset("in other");
        files.add(other);
        UuidText extension = extensionImage();
        inExtension = extension.offset("in extension");
        extension.entries.push_back({nearLoad + 0x10, ByteBuilder().cstr("at its code").take()});
        files.add(extension);
        process.images.push_back({loadSize, extension.uuid, load});
        process.images.push_back({loadSize, extension.uuid, nearLoad});
        cache.images.push_back({testUuid(0x22), middlePath, middleStart, imageSize});
        cache.images.push_back({testUuid(0x23), farPath, farStart, imageSize});
        inFirst = cache.offset(0, "in first");
        inMiddle = cache.offset(1, "in middle");
        inFar = cache.offset(2, "in far");
    }

    std::uint32_t inTester = 0;
    std::uint32_t inOther = 0;
    std::uint32_t inExtension = 0;
    std::uint64_t inFirst = 0;
    std::uint64_t inMiddle = 0;
    std::uint64_t inFar = 0;
};

using Change = std::function<void(StringStore&, Firehose&)>;

StringReference withLarge(StringReference reference, std::uint16_t largeOffset)
{
    reference.largeOffset = largeOffset;
    return reference;
}

StringReference withSource(StringReference reference, unsigned source)
{
    reference.source = static_cast<StringSource>(source);
    return reference;
}

StringReference withoutLarge(StringReference reference)
{
    reference.largeOffset.reset();
    return reference;
}

StringReference withCache(StringReference reference, std::uint16_t largeCache)
{
    reference.largeCache = largeCache;
    return reference;
}

StringReference withAddress(StringReference reference, std::uint32_t address)
{
    reference.addressLow = address;
    return reference;
}

Record record(const StringReference& format)
{
    Record result{.time = 1};
    result.format = format;
    result.items = {text("given")};
    return result;
}

} // namespace

/// How records find their format strings, and what stands for those that are not found.
class TestStoreStrings : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void everySource_data()
    {
        QTest::addColumn<StringReference>("reference");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("sender");
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("process");

        const StringStore s;
        const auto row = [](const char* name, const StringReference& reference, const char* message,
                            const char* sender, Change change = {},
                            const char* process = testerPath) {
            QTest::newRow(name) << reference << utf8(message) << utf8(sender) << change
                                << utf8(process);
        };
        row("main executable", inMain(s.inTester), "in tester", testerPath);
        row("main executable, dynamic", dynamic(inMain(0x77)), "given", testerPath);
        row("main executable, outside", inMain(0x9999), noUuid, testerPath);
        row("main executable, large offset", withLarge(inMain(s.inTester), 1), noUuid, testerPath);
        row("main executable, large offset of 0", withLarge(inMain(s.inTester), 0), "in tester",
            testerPath);

        row("shared cache", inSharedCache(s.inFirst), "in first", firstPath);
        row("shared cache, beyond 2 GiB", inSharedCache(s.inMiddle), "in middle", middlePath);
        row("shared cache, beyond 4 GiB", inSharedCache(s.inFar), "in far", farPath);
        row("shared cache, outside", inSharedCache(0x7000'0000), noOffset, "");
        row("shared cache, large offset beside", withLarge(inSharedCache(s.inFirst), 7), noOffset,
            "");
        row("shared cache, dynamic, image of the offset",
            dynamic(withAddress(inSharedCache(s.inFirst), 0x1)), "given", firstPath);
        row("shared cache, dynamic, image of the code",
            dynamic(withAddress(inSharedCache(0x10), std::uint32_t(middleStart))), "given",
            middlePath);
        row("shared cache, dynamic, code beyond 4 GiB",
            dynamic(withLarge(withAddress(inSharedCache(0x10), std::uint32_t(farStart)), 2)),
            "given", farPath);
        row("shared cache, dynamic, in no image", dynamic(withAddress(inSharedCache(0x10), 0x20)),
            "given", "");

        row("large shared cache", inLargeSharedCache(s.inFar), "in far", farPath);
        row("large shared cache, first part", inLargeSharedCache(s.inFirst), "in first", firstPath);
        row("large shared cache, one number", withoutLarge(inLargeSharedCache(s.inFar)), "in far",
            farPath);
        row("large shared cache, one number of 2 GiB", withoutLarge(inLargeSharedCache(s.inMiddle)),
            "in middle", middlePath);
        row("large shared cache, the offset in its place",
            withCache(withLarge(inLargeSharedCache(s.inMiddle), 1), 0), "in middle", middlePath);
        row("large shared cache, numbers that disagree", withLarge(inLargeSharedCache(s.inFar), 2),
            "in far", "");
        row("large shared cache, outside", inLargeSharedCache(0x2'0000'0000), noOffset, "");

        row("absolute", absolute(load + 0x10, s.inExtension), "in extension", extensionPath);
        row("absolute, first byte of the image", absolute(load, s.inExtension), "in extension",
            extensionPath);
        row("absolute, last byte of the image", absolute(load + loadSize - 1, s.inExtension),
            "in extension", extensionPath);
        row("absolute, behind the image", absolute(load + loadSize, s.inExtension), noLog, "");
        row("absolute, before the image", absolute(load - 1, s.inExtension), noLog, "");
        row("absolute, large offset of 0", withLarge(absolute(load, s.inExtension), 0),
            "in extension", extensionPath);
        row("absolute, large offset", withLarge(absolute(load, s.inExtension), 1), noUuid,
            extensionPath);
        row("absolute, offset outside", absolute(load, 0x9999), noUuid, extensionPath);
        row("absolute, dynamic", dynamic(absolute(load, 0x9999)), "given", extensionPath);
        row("absolute, offset and address are one", absolute(nearLoad + 0x10, nearLoad + 0x10),
            "given", extensionPath);

        row("relative", inImage(testUuid(0x12), s.inOther), "in other", otherPath);
        row("relative, dynamic", dynamic(inImage(testUuid(0x12), 1)), "given", otherPath);
        row("relative, outside", inImage(testUuid(0x12), 0x9999), noUuid, otherPath);
        row("relative, large offset of 0", withLarge(inImage(testUuid(0x12), s.inOther), 0),
            "in other", otherPath);
        row("relative, unknown image", inImage(testUuid(0x19), s.inOther), noUuid, "");
        row("relative, unknown image, dynamic", dynamic(inImage(testUuid(0x19), 1)), noUuid, "");

        row("no source", withSource(inMain(s.inTester), 0), noLog, "");
        row("unknown source 6", withSource(inMain(s.inTester), 6), noLog, "");
        row("unknown source 0xe", withSource(inMain(s.inTester), 0xe), noLog, "");
        row("unknown source with a large offset", withLarge(withSource(inMain(s.inTester), 6), 3),
            noLog, "");

        const Change oldCache = [](StringStore& store, Firehose&) {
            store.cache.version = 1;
            store.cache.images.pop_back();
            store.cache.ranges.pop_back();
        };
        row("old cache", inSharedCache(s.inFirst), "in first", firstPath, oldCache);
        row("old cache, beyond 2 GiB", inSharedCache(s.inMiddle), "in middle", middlePath,
            oldCache);
        row("old cache, outside", inSharedCache(0x7000'0000), noOffset, "", oldCache);

        const Change stranger = [](StringStore&, Firehose& page) {
            page.process.second += 1; // both parts of the key count
        };
        row("unknown process, main executable", inMain(s.inTester), noUuid, "", stranger, "");
        row("unknown process, shared cache", inSharedCache(s.inFirst), noSharedUuid, "", stranger,
            "");
        row("unknown process, large shared cache", inLargeSharedCache(s.inFar), noSharedUuid, "",
            stranger, "");
        row("unknown process, absolute", absolute(load, s.inExtension), noLog, "", stranger, "");
        row("unknown process, relative", inImage(testUuid(0x12), s.inOther), "in other", otherPath,
            stranger, "");

        const Change noMain = [](StringStore& store, Firehose&) {
            store.process.mainImage = testUuid(0x77);
        };
        const Change noCache = [](StringStore& store, Firehose&) {
            store.process.sharedCache.reset();
        };
        const Change otherCache = [](StringStore& store, Firehose&) {
            store.process.sharedCache = testUuid(0x78);
        };
        const Change badText = [](StringStore& store, Firehose&) {
            store.files.files[store.files.stringsPath(store.image.uuid)] = {0x99, 0x88, 0x77, 0x67,
                                                                            0,    0,    0,    0};
        };
        row("image missing", inMain(s.inTester), noUuid, "", noMain, "");
        row("image missing, string elsewhere", inSharedCache(s.inFirst), "in first", firstPath,
            noMain, "");
        row("image damaged", inMain(s.inTester), noUuid, "", badText, "");
        row("process without cache", inSharedCache(s.inFirst), noSharedUuid, "", noCache);
        row("process without cache, dynamic", dynamic(inSharedCache(s.inFirst)), noSharedUuid, "",
            noCache);
        row("cache missing", inLargeSharedCache(s.inFar), noSharedUuid, "", otherCache);
    }

    void everySource()
    {
        QFETCH(StringReference, reference);
        QFETCH(QString, message);
        QFETCH(QString, sender);
        QFETCH(Change, change);
        QFETCH(QString, process);
        StringStore store;
        Record entry = record(reference);
        entry.subsystem = store.process.subsystem("org.example", "general");
        entry.timeToLive = 3;
        entry.thread = 42;
        Firehose page = store.page({entry});
        if (change)
            change(store, page);
        store.addChunks({page});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].message, message);
        QCOMPARE(entries[0].senderPath, sender);
        QCOMPARE(entries[0].sender, sender.section(QLatin1Char('/'), -1));
        QCOMPARE(entries[0].processPath, process);
        QCOMPARE(entries[0].process, process.section(QLatin1Char('/'), -1));
        const bool isKnown = page.process == store.process.key;
        QCOMPARE(entries[0].processIdentifier, isKnown ? 77 : 0);
        QCOMPARE(entries[0].time, WrittenStore::bootTime + 1);
        QCOMPARE(entries[0].thread, std::uint64_t(42));
        // What follows the reference was read at its right place.
        QCOMPARE(entries[0].subsystem, isKnown ? QStringLiteral("org.example") : QString());
        QCOMPARE(entries[0].storeCategory, logstore::StoreCategory::LongTerm3);
        const bool failed = message.startsWith(QLatin1Char('<'));
        QCOMPARE(entries[0].format, failed                ? QString()
                                    : message == u"given" ? QStringLiteral("%s")
                                                          : message);
    }

    void signpostNames_data()
    {
        QTest::addColumn<StringReference>("reference");
        QTest::addColumn<std::optional<NameReference>>("name");
        QTest::addColumn<QString>("expected");

        using Name = std::optional<NameReference>;
        const StringStore s;
        QTest::newRow("none") << inMain(s.inTester) << Name() << QString();
        QTest::newRow("main executable")
            << inMain(0x9999) << Name(nameAt(s.inTester)) << utf8("in tester");
        QTest::newRow("bit 31 does not matter")
            << inMain(0x9999) << Name(NameReference{s.inTester | dynamicFlag, 0})
            << utf8("in tester");
        QTest::newRow("outside") << inMain(s.inTester) << Name(nameAt(0x9999)) << QString();
        QTest::newRow("shared cache")
            << inSharedCache(s.inFirst) << Name(nameAt(s.inFirst + 3)) << utf8("first");
        QTest::newRow("shared cache beyond 4 GiB")
            << inSharedCache(s.inFar) << Name(nameAt(s.inFar + 3)) << utf8("far");
        QTest::newRow("large shared cache")
            << inLargeSharedCache(s.inFar) << Name(nameAt(s.inFar)) << utf8("in far");
        QTest::newRow("large shared cache, one number")
            << withoutLarge(inLargeSharedCache(s.inFar)) << Name(nameAt(s.inFar)) << utf8("in far");
        QTest::newRow("large shared cache, name in another part")
            << inLargeSharedCache(s.inFar) << Name(nameAt(s.inMiddle)) << utf8("in middle");
        QTest::newRow("absolute") << absolute(load, s.inExtension) << Name(nameAt(s.inExtension))
                                  << utf8("in extension");
        QTest::newRow("absolute, at the address of its code")
            << absolute(nearLoad + 0x10, s.inExtension) << Name(nameAt(nearLoad + 0x10))
            << utf8("at its code");
        QTest::newRow("relative") << inImage(testUuid(0x12), s.inOther) << Name(nameAt(s.inOther))
                                  << utf8("in other");
    }

    void signpostNames()
    {
        QFETCH(StringReference, reference);
        QFETCH(std::optional<NameReference>, name);
        QFETCH(QString, expected);
        StringStore store;
        Record signpost{
            .kind = RecordKind::Signpost, .type = ProcessScope | SignpostEvent, .time = 1};
        signpost.format = reference;
        signpost.name = name;
        signpost.signpost = 99;
        store.addRecords({signpost});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].signpostName, expected);
        QCOMPARE(entries[0].signpost, std::uint64_t(99));
    }

    void placesInAStringFile_data()
    {
        QTest::addColumn<std::uint32_t>("offset");
        QTest::addColumn<QString>("expected");
        QTest::newRow("start of the first entry") << 0x500U << utf8("high");
        QTest::newRow("within a string") << 0x502U << utf8("gh");
        QTest::newRow("the zero byte") << 0x504U << QString();
        QTest::newRow("entry with a lower start behind it") << 0x100U << utf8("low");
        QTest::newRow("last entry, without a zero byte") << 0x900U << utf8("end");
        QTest::newRow("just behind an entry") << 0x505U << utf8(noUuid);
        QTest::newRow("just before an entry") << 0xffU << utf8(noUuid);
    }

    void placesInAStringFile()
    {
        QFETCH(std::uint32_t, offset);
        QFETCH(QString, expected);
        WrittenStore store;
        store.image.entries = {{0x500, ByteBuilder().cstr("high").take()},
                               {0x100, ByteBuilder().cstr("low").take()},
                               {0x900, ByteBuilder().text("end").take()}};
        store.addRecords({record(inMain(offset))});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].message, expected);
        QCOMPARE(entries[0].senderPath, utf8(testerPath));
    }

    void placesInACache_data()
    {
        QTest::addColumn<std::uint64_t>("offset");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("sender");
        using Offset = std::uint64_t;
        QTest::newRow("range that stands first")
            << Offset(0x5000) << utf8("third") << utf8(firstPath);
        QTest::newRow("range with a lower start behind it")
            << Offset(0x1000) << utf8("one") << utf8(firstPath);
        QTest::newRow("string cut by the end of its range")
            << Offset(0x1004) << utf8("tw") << utf8(firstPath);
        QTest::newRow("adjoining range of another image")
            << Offset(0x1006) << utf8("two") << utf8("/second");
        QTest::newRow("just behind the last range")
            << Offset(0x5006) << utf8(noOffset) << QString();
        QTest::newRow("range of an image that is not there")
            << Offset(0x9000) << utf8("orphan") << QString();
    }

    void placesInACache()
    {
        QFETCH(std::uint64_t, offset);
        QFETCH(QString, expected);
        QFETCH(QString, sender);
        WrittenStore store;
        store.cache.images.push_back({testUuid(0x22), "/second", 0x1006, 0x10});
        store.cache.ranges = {{0x5000, 0, ByteBuilder().cstr("third").take()},
                              {0x1000, 0, ByteBuilder().cstr("one").text("tw").take()},
                              {0x1006, 1, ByteBuilder().cstr("two").take()},
                              {0x9000, 7, ByteBuilder().cstr("orphan").take()}};
        store.addRecords({record(inSharedCache(offset))});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].message, expected);
        QCOMPARE(entries[0].senderPath, sender);
    }

    void liveLayoutFindsItsStrings()
    {
        WrittenStore store;
        store.files.layout = StoreLayout::Live;
        store.addRecords({store.message(1, "in the live store"),
                          record(inSharedCache(store.cache.offset(0, "in its cache")))});
        QCOMPARE(store.messages(), utf8("in the live store\nin its cache"));
        const auto diagnostics = logstore::Store::open(store.write() / "diagnostics");
        QVERIFY(diagnostics);
        auto stream = diagnostics->entries(WrittenStore::bootTime + 1);
        QCOMPARE(stream.next()->composedMessage(), std::string_view("in the live store"));
    }
};

TESSEL_TEST(TestStoreStrings)
#include "tst_storestrings.moc"
