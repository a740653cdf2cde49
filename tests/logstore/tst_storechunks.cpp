// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QTest>

#include <algorithm>
#include <array>

using namespace logstore::writer;

namespace {

Oversize oversizeOf(const WrittenStore& store,
                    std::uint64_t time,
                    std::uint32_t reference,
                    const char* value)
{
    Oversize oversize{.process = store.process.key, .time = time, .reference = reference};
    oversize.items = {text(value)};
    return oversize;
}

Record withOversize(WrittenStore& store, std::uint64_t time, std::uint32_t reference)
{
    Record record = store.message(time, "[%s]");
    record.oversize = reference;
    return record;
}

/// Where the last catalog's head starts.
Bytes::iterator lastCatalog(Bytes& file)
{
    constexpr std::array<std::uint8_t, 8> head{0x0b, 0x60, 0, 0, 0x11, 0, 0, 0};
    return std::find_end(file.begin(), file.end(), head.begin(), head.end());
}

} // namespace

/// How records and their arguments lie in chunks, and chunks in chunk sets.
class TestStoreChunks : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void oversizeItems_data()
    {
        using Sets = std::function<std::vector<ChunkSet>(WrittenStore&)>;
        QTest::addColumn<Sets>("sets");
        QTest::addColumn<QString>("messages");
        const auto row = [](const char* name, Sets sets, const char* messages) {
            QTest::newRow(name) << sets << utf8(messages);
        };
        row(
            "in front, in the same set",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{oversizeOf(s, 9, 3, "found"), s.page({withOversize(s, 9, 3)})}}};
            },
            "[found]");
        row(
            "behind, in the same set",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{s.page({withOversize(s, 9, 3)}), oversizeOf(s, 9, 3, "found")}}};
            },
            "[found]");
        row(
            "in a set before",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{oversizeOf(s, 9, 3, "found")}},
                        {{s.page({s.message(5, "between")})}},
                        {{s.page({withOversize(s, 9, 3)})}}};
            },
            "between\n[found]");
        row(
            "in a set that is decoded later",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{s.page({s.message(1, "first"), withOversize(s, 9, 3)})}},
                        {{oversizeOf(s, 9, 3, "found")}}};
            },
            "first\n[found]");
        row(
            "missing",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{s.page({withOversize(s, 9, 3)})}}};
            },
            "[<decode: missing data>]");
        row(
            "of another process",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                Oversize other = oversizeOf(s, 9, 3, "other");
                other.process.second += 1;
                return {{{other, s.page({withOversize(s, 9, 3)})}}};
            },
            "[<decode: missing data>]");
        row(
            "same reference of two processes",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                Oversize other = oversizeOf(s, 9, 3, "other");
                other.process.first += 1;
                return {{{oversizeOf(s, 9, 3, "own"), other, s.page({withOversize(s, 9, 3)})}}};
            },
            "[own]");
        row(
            "another reference",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{oversizeOf(s, 9, 4, "other"), s.page({withOversize(s, 9, 3)})}}};
            },
            "[<decode: missing data>]");
        row(
            "of a later time, where none is of its own",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{oversizeOf(s, 20, 3, "later"), oversizeOf(s, 8, 4, "earlier"),
                          oversizeOf(s, 21, 4, "later"),
                          s.page({withOversize(s, 9, 3), withOversize(s, 10, 4)})}}};
            },
            "[later]\n[earlier]");
        row(
            "two records, two references",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{oversizeOf(s, 8, 1, "one"), oversizeOf(s, 9, 2, "two"),
                          s.page({withOversize(s, 8, 1), withOversize(s, 9, 2)})}}};
            },
            "[one]\n[two]");
        row(
            "of no record",
            [](WrittenStore& s) -> std::vector<ChunkSet> {
                return {{{oversizeOf(s, 1, 4, "nobody's"), s.page({s.message(2, "alone")})}}};
            },
            "alone");
    }

    void oversizeItems()
    {
        QFETCH(std::function<std::vector<ChunkSet>(WrittenStore&)>, sets);
        QFETCH(QString, messages);
        WrittenStore store;
        store.files.add(persist, store.trace(sets(store)));
        QCOMPARE(store.messages(), messages);
    }

    void oversizeItemsWithPrivateDataAndBacktrace()
    {
        WrittenStore store;
        Oversize oversize{.process = store.process.key, .time = 9, .reference = 3};
        oversize.items = {text(std::string(3000, 'x')), text("secret", Privacy::Private),
                          number<std::int32_t>(5, Privacy::Private)};
        oversize.backtrace = Backtrace{{testUuid(1), testUuid(2)}, {{0, 1}, {1, 2}, {0, 3}}};
        Record record = store.message(9, "%s %s %d");
        record.oversize = 3;
        record.subsystem = store.process.subsystem("org.example", "general");
        record.timeToLive = 14;
        store.addChunks({oversize, store.page({record})});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].message, QString(3000, QLatin1Char('x')) + utf8(" secret 5"));
        QCOMPARE(entries[0].subsystem, utf8("org.example"));
    }

    void backtraceIsPassedOver()
    {
        for (int frames = 0; frames < 9; ++frames) {
            WrittenStore store;
            Record record = store.message(1, "%s %@ %d");
            record.items = {text("one"), object(""), number<std::int32_t>(2)};
            record.backtrace = Backtrace{{testUuid(1), testUuid(2)}, {}};
            record.backtrace.frames.resize(std::size_t(frames));
            QCOMPARE(only(store, record).message, utf8("one  2"));
        }
    }

    void roomBetweenPublicAndPrivateData_data()
    {
        QTest::addColumn<bool>("collapsed");
        QTest::newRow("collapsed") << true;
        QTest::newRow("not collapsed") << false;
    }

    void roomBetweenPublicAndPrivateData()
    {
        QFETCH(bool, collapsed);
        WrittenStore store;
        std::vector<Record> records;
        QStringList expected;
        for (int i = 0; i < 20; ++i) {
            Record record = store.message(std::uint64_t(i), "%s and %s");
            const std::string secret(std::size_t(i), char('a' + i));
            record.items = {text(secret, Privacy::Private), text(std::to_string(i))};
            records.push_back(record);
            expected += QStringLiteral("%1 and %2").arg(QString::fromStdString(secret)).arg(i);
        }
        Firehose page = store.page(records);
        page.collapsed = collapsed;
        store.addChunks({page, store.page({store.message(100, "next chunk")})});
        expected += utf8("next chunk");
        QCOMPARE(store.messages(), expected.join(QLatin1Char('\n')));
    }

    void chunksWithoutPadding()
    {
        WrittenStore store;
        Record odd = store.message(1, "%s");
        odd.items = {text("odd", Privacy::Private)};
        ChunkSet set{{store.page({odd}), store.page({store.message(2, "next")}), store.page({odd}),
                      store.page({store.message(3, "last")})},
                     {},
                     false,
                     {},
                     {}};
        store.files.add(persist, store.trace({set}));
        QCOMPARE(store.messages(), utf8("odd\nodd\nnext\nlast"));
    }

    void packings_data()
    {
        QTest::addColumn<Packing>("packing");
        QTest::newRow("one block") << Packing{};
        QTest::newRow("stored") << Packing{Compression::Stored, 0};
        QTest::newRow("stored in blocks") << Packing{Compression::Stored, 1000};
        QTest::newRow("blocks that refer back") << Packing{Compression::Lz4, 1000};
        QTest::newRow("blocks as large as the dictionary") << Packing{Compression::Lz4, 0x10000};
        QTest::newRow("LZBITMAP") << Packing{Compression::Lzbitmap};
    }

    void packings()
    {
        QFETCH(Packing, packing);
        WrittenStore store;
        std::vector<Chunk> chunks;
        QStringList expected;
        for (int page = 0; page < 60; ++page) {
            std::vector<Record> records;
            for (int i = 0; i < 20; ++i) {
                Record record = store.message(std::uint64_t(page * 20 + i), "%s");
                const QString value = QStringLiteral("value %1, which goes on for a while")
                                          .arg((page * 20 + i) * 7919 % 4093);
                record.items = {text(value.toStdString())};
                expected += value;
                records.push_back(record);
            }
            chunks.push_back(store.page(records));
        }
        store.files.add(persist, store.trace({ChunkSet{chunks, packing, true, {}, {}}}));
        QCOMPARE(store.messages(), expected.join(QLatin1Char('\n')));
    }

    void processOfTheNextCatalog()
    {
        WrittenStore store;
        TraceFile file = store.trace({{{store.page({store.message(1, "first")})}}});
        Section second = file.sections[0];
        second.processes[0].pid = 78;
        file.sections.push_back(second);
        store.files.add(persist, file);
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(2));
        QCOMPARE(entries[0].processIdentifier, 77);
        QCOMPARE(entries[1].processIdentifier, 78);

        // With that catalog lost, its chunk set must not be taken for one of the first.
        Bytes& bytes = store.files.files[persist];
        std::fill_n(lastCatalog(bytes), 8, std::uint8_t(0));
        QCOMPARE(store.entries().at(1).processIdentifier, 0);
    }

    /// The boot is in no time file, so each header counts the time for itself.
    void oversizeItemsBehindAFurtherHeader()
    {
        WrittenStore store;
        TraceFile file = store.trace({{{oversizeOf(store, 9, 3, "found")}}});
        file.header.boot = testUuid(0xee);
        Section second = file.sections[0];
        second.header = file.header;
        second.sets = {{{store.page({withOversize(store, 9, 3)})}}};
        file.sections.push_back(second);
        store.files.add(persist, file);
        QCOMPARE(store.messages(), utf8("[found]"));
    }

    void catalogHoldsBehindAFurtherHeader()
    {
        WrittenStore store;
        TraceFile file = store.trace({{{store.page({store.message(1, "first")})}}});
        Section second = file.sections[0];
        second.header = file.header;
        second.sets = {{{store.page({store.message(2, "second")})}}};
        file.sections.push_back(second);
        store.files.add(persist, file);
        Bytes& bytes = store.files.files[persist];
        constexpr std::array<std::uint8_t, 8> chunkSetHead{0x0d, 0x60, 0, 0, 0x11, 0, 0, 0};
        const auto last = lastCatalog(bytes);
        bytes.erase(last, std::search(last, bytes.end(), chunkSetHead.begin(), chunkSetHead.end()));
        QCOMPARE(store.messages(), utf8("first\nsecond"));
    }
};

TESSEL_TEST(TestStoreChunks)
#include "tst_storechunks.moc"
