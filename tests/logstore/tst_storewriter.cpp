// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/catalog.h"
#include "platform/logstore/writer/storefiles.h"
#include "platform/logstore/writer/tracelayout.h"
#include "support/testcase.h"

#include <QTest>

using namespace logstore::writer;
using logstore::Uuid;

namespace {

Uuid uuid(const char* text)
{
    return Uuid::fromText(text).value();
}

/// A process with one subsystem, as a real catalog described it.
Bytes smallCatalog()
{
    Process process{{14225, 14226}, 14225, 0, uuid("101674443A9A33FCAF11D0ADEBBF5B95"), {}, {}, {}};
    process.sharedCache = uuid("8E21CAB1DCF936B49F85CF860E6F34EC");
    process.subsystem("com.apple.AssetCache", "builtin");
    Catalog catalog{{process}, {{435663966275, 435760861359, 544, {0}}}, 0x74593c5b83, {}};
    return body(catalog);
}

Record threeObjects()
{
    Record record{.type = ErrorMessage, .time = 0x1000000000, .thread = 28030};
    record.format = inMain(0x35a710);
    record.format.addressLow = 0x44f6;
    record.subsystem = 1;
    record.timeToLive = 21;
    record.items = {object("Built-in"), object("Caching Server"), object("214.2")};
    return record;
}

Record namedSignpost()
{
    Record record{.kind = RecordKind::Signpost,
                  .type = ProcessScope | SignpostEvent,
                  .time = 0x280de80,
                  .thread = 1366};
    record.format = inMain(0x108c);
    record.format.addressLow = 0x3000;
    record.subsystem = 1;
    record.timeToLive = 1;
    record.signpost = 77;
    record.name = nameAt(0x109c);
    record.items = {number<std::uint32_t>(6)};
    return record;
}

} // namespace

/// What the writer builds, against bytes of real files.
class TestStoreWriter : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void bytesAreThoseOfRealFiles_data()
    {
        QTest::addColumn<Bytes>("built");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("catalog with one process") << smallCatalog() << QByteArray(R"(
        20 00 40 00 01 00 78 00 01 00 00 00 00 00 00 00
        83 5b 3c 59 74 00 00 00 10 16 74 44 3a 9a 33 fc
        af 11 d0 ad eb bf 5b 95 8e 21 ca b1 dc f9 36 b4
        9f 85 cf 86 0e 6f 34 ec 63 6f 6d 2e 61 70 70 6c
        65 2e 41 73 73 65 74 43 61 63 68 65 00 62 75 69
        6c 74 69 6e 00 00 00 00 00 00 00 00 00 00 01 00
        91 37 00 00 00 00 00 00 92 37 00 00 91 37 00 00
        00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00
        01 00 00 00 00 00 00 00 01 00 00 00 15 00 00 00
        43 90 98 6f 65 00 00 00 af 10 5f 75 65 00 00 00
        20 02 00 00 00 01 00 00 01 00 00 00 00 00 02 00
        00 00 00 00 15 00 00 00)");
        QTest::newRow("record with three objects")
            << recordBytes(threeObjects(), 0).bytes << QByteArray(R"(
        04 10 02 06 10 a7 35 00 7e 6d 00 00 00 00 00 00 00 00 00 00 10 00 39 00
        f6 44 00 00 01 00 15 02 03
        42 04 00 00 09 00 42 04 09 00 0f 00 42 04 18 00 06 00
        42 75 69 6c 74 2d 69 6e 00
        43 61 63 68 69 6e 67 20 53 65 72 76 65 72 00
        32 31 34 2e 32 00)");
        QTest::newRow("signpost with name and time to live")
            << recordBytes(namedSignpost(), 0).bytes << QByteArray(R"(
        06 80 02 86 8c 10 00 00 56 05 00 00 00 00 00 00 80 de 80 02 00 00 1b 00
        00 30 00 00 01 00 01 4d 00 00 00 00 00 00 00 9c 10 00 00
        00 01 00 04 06 00 00 00)");
    }

    void bytesAreThoseOfRealFiles()
    {
        QFETCH(Bytes, built);
        QFETCH(QByteArray, expected);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(built.data()), qsizetype(built.size()))
                     .toHex(' '),
                 expected.simplified());
    }

    void layoutKeepsPagesAndSetsSmall()
    {
        std::vector<Process> processes(3);
        TraceLayout layout{Header{}};
        constexpr std::size_t count = 20'000;
        for (std::size_t i = 0; i < count; ++i) {
            Record record{.time = i};
            record.items = {text(std::string(i % 200, 'x')), text("secret", Privacy::Private)};
            layout.add(processes[i % 3], record);
        }
        std::size_t found = 0;
        for (const Section& section : layout.finish().sections) {
            QVERIFY(section.sets.size() <= 8);
            for (const ChunkSet& set : section.sets) {
                std::size_t size = 0;
                for (const Chunk& chunk : set.chunks) {
                    const Firehose& page = std::get<Firehose>(chunk);
                    const std::size_t bytes = body(page).size();
                    QVERIFY2(bytes <= 16 + firehosePageSize, qPrintable(QString::number(bytes)));
                    size += 16 + bytes;
                    found += page.records.size();
                }
                QVERIFY2(size <= 0x10000, qPrintable(QString::number(size)));
            }
        }
        QCOMPARE(found, count);
    }

    void oversizeItemsStandBeforeTheirRecord()
    {
        const Process process;
        TraceLayout layout{Header{}};
        layout.add(process, Record{.time = 1, .items = {text("small")}});
        layout.add(process, Record{.time = 2, .items = {text(std::string(5000, 'x'))}});
        const TraceFile file = layout.finish();
        const auto& chunks = file.sections.at(0).sets.at(0).chunks;
        QCOMPARE(chunks.size(), std::size_t(3));
        const auto& oversize = std::get<Oversize>(chunks[1]);
        const auto& record = std::get<Firehose>(chunks[2]).records.at(0);
        QCOMPARE(oversize.time, record.time);
        QCOMPARE(oversize.reference, record.oversize.value_or(0));
        QCOMPARE(oversize.items.at(0).value.size(), std::size_t(5001));
        QVERIFY(record.items.empty());
    }

    void missingFolderIsNamed()
    {
        StoreFiles files;
        files.addText("version.plist", "text");
        const auto result = files.write("/dev/null/store");
        QVERIFY(!result);
        QVERIFY(QString::fromStdString(result.error().description)
                    .contains(QStringLiteral("“/dev/null/store/version.plist”")));
    }
};

TESSEL_TEST(TestStoreWriter)
#include "tst_storewriter.moc"
