// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QTest>

using namespace logstore::writer;

namespace {

constexpr std::size_t firstRecord = 32; ///< in the body of a page
constexpr std::size_t recordData = firstRecord + 24;

/// Where the chunk of this number begins in a trace file: 0 is the header, 1 the catalog.
std::size_t outerChunk(const Bytes& file, int number)
{
    std::size_t at = 0;
    for (; number > 0; --number) {
        std::uint64_t size = 0;
        std::memcpy(&size, &file.at(at + 8), sizeof size);
        at = (at + 16 + static_cast<std::size_t>(size) + 7) / 8 * 8;
    }
    return at;
}

/// Four messages in three chunk sets of one file, the middle one with two of them; and one more in
/// another file, which no damage of the first may touch.
class DamagedStore : public WrittenStore
{
public:
    DamagedStore()
    {
        file = trace({{{page({message(1, "one")})}},
                      {{page({message(2, "two"), message(3, "two again")})}},
                      {{page({message(4, "three")})}}});
        files.add("Special/0000000000000001.tracev3",
                  trace({{{page({message(5, "other file")})}}}));
    }

    Section& section() { return file.sections[0]; }
    ChunkSet& middleSet() { return section().sets[1]; }
    Firehose& middlePage() { return std::get<Firehose>(middleSet().chunks[0]); }
    /// The file's bytes, for damage that no edit reaches; build() must come first.
    Bytes& bytes() { return files.files[persist]; }
    void build() { files.add(persist, file); }

    TraceFile file;
};

using Damage = std::function<void(DamagedStore&)>;

void row(const char* name, Damage damage, std::initializer_list<const char*> expected)
{
    QTest::newRow(name) << std::move(damage) << lines(expected);
}

/// Damage of the file's bytes at a place of one of its chunks.
template <typename T>
Damage outer(int chunk, std::size_t offset, T value)
{
    return [=](DamagedStore& store) {
        store.build();
        put(outerChunk(store.bytes(), chunk) + offset, value)(store.bytes());
    };
}

template <typename T>
Damage packed(std::size_t offset, T value)
{
    return [=](DamagedStore& store) { store.middleSet().edit = put(offset, value); };
}

template <typename T>
Damage content(std::size_t offset, T value)
{
    return [=](DamagedStore& store) { store.middleSet().editContent = put(offset, value); };
}

template <typename T>
Damage inPage(std::size_t offset, T value)
{
    return [=](DamagedStore& store) { store.middlePage().edit = put(offset, value); };
}

template <typename T>
Damage inCatalog(std::size_t offset, T value)
{
    return [=](DamagedStore& store) { store.section().editCatalog = put(offset, value); };
}

} // namespace

/// Damaged and hostile stores: what is hit is lost, the rest is read.
class TestStoreDamage : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void damageCostsWhatItHits_data()
    {
        QTest::addColumn<Damage>("damage");
        QTest::addColumn<QString>("expected");
        constexpr auto noUuid = "<compose failure [UUID]>";
        constexpr std::size_t process =
            24 + 2 * 16; // the first process entry, in the catalog's body

        row("nothing", [](DamagedStore& s) { s.build(); },
            {"one", "two", "two again", "three", "other file"});

        row("file is empty",
            [](DamagedStore& s) {
                s.build();
                s.bytes().clear();
            },
            {"other file"});
        row("file has a few bytes",
            [](DamagedStore& s) {
                s.build();
                s.bytes().resize(7);
            },
            {"other file"});
        row("file begins with another chunk", outer<std::uint32_t>(0, 0, 0x600b), {"other file"});
        row("header is too short",
            [](DamagedStore& s) {
                s.build();
                put<std::uint64_t>(8, 200)(s.bytes());
                s.bytes().erase(s.bytes().begin() + 216, s.bytes().begin() + 224);
            },
            {"other file"});
        const auto everything = {"one", "two", "two again", "three", "other file"};
        row("chunk set says it is longer than the file", outer<std::uint64_t>(3, 8, 1'000'000'000),
            everything);
        row("chunk set says it is as long as can be", outer<std::uint64_t>(3, 8, UINT64_MAX),
            everything);
        row("chunk set says it is shorter than it is", outer<std::uint64_t>(3, 8, 24), everything);
        row("header says it is longer than it is", outer<std::uint64_t>(0, 8, 216), everything);
        row("catalog says it is longer than it is", outer<std::uint64_t>(1, 8, 1'000), everything);
        row(
            "wrong sizes one after the other",
            [](DamagedStore& s) {
                s.build();
                const std::size_t last = outerChunk(s.bytes(), 4);
                outer<std::uint64_t>(3, 8, 24)(s);
                put<std::uint64_t>(last + 8, UINT64_MAX / 2)(s.bytes());
            },
            everything);
        for (const std::uint8_t filler : {std::uint8_t(0), std::uint8_t(0x5a)})
            row(filler == 0 ? "zeros over a head" : "noise over a head",
                [filler](DamagedStore& s) {
                    s.build();
                    std::fill_n(&s.bytes()[outerChunk(s.bytes(), 3) - 8], 32, filler);
                },
                {"one", "three", "other file"});
        row(
            "zeros after the last chunk",
            [](DamagedStore& s) {
                s.build();
                s.bytes().resize(s.bytes().size() + 200'000);
            },
            everything);
        row(
            "zeros between chunks",
            [](DamagedStore& s) {
                s.build();
                const auto place = std::ptrdiff_t(outerChunk(s.bytes(), 3));
                s.bytes().insert(s.bytes().begin() + place, 200'000, 0);
            },
            everything);
        row(
            "chunk set with too much after its end",
            [](DamagedStore& s) { s.middleSet().edit = [](Bytes& b) { b.resize(70U << 20); }; },
            everything);
        row("file is cut in the middle set",
            [](DamagedStore& s) {
                s.build();
                s.bytes().resize(outerChunk(s.bytes(), 3) + 30);
            },
            {"one", "other file"});
        row("unknown tag", outer<std::uint32_t>(3, 0, 0x7777), {"one", "three", "other file"});
        row("no catalog", outer<std::uint32_t>(1, 0, 0x7777),
            {noUuid, noUuid, noUuid, noUuid, "other file"});

        row("unknown block", packed<std::uint32_t>(0, 0x35347662), {"one", "three", "other file"});
        row("block of 65 MiB", packed<std::uint32_t>(4, 65U << 20), {"one", "three", "other file"});
        row("block longer than the chunk", packed<std::uint32_t>(8, enormous),
            {"one", "three", "other file"});
        row("block gives more than it says", packed<std::uint32_t>(4, 8),
            {"one", "three", "other file"});
        row("block refers to what is not there", packed<std::uint64_t>(13, UINT64_MAX),
            {"one", "three", "other file"});
        row("no end marker",
            [](DamagedStore& s) { s.middleSet().edit = [](Bytes& b) { b.resize(b.size() - 4); }; },
            {"one", "two", "two again", "three", "other file"});
        row("empty chunk set",
            [](DamagedStore& s) { s.middleSet().edit = [](Bytes& b) { b.clear(); }; },
            {"one", "three", "other file"});

        row("inner chunk says it is as long as can be", content<std::uint64_t>(8, UINT64_MAX),
            {"one", "two", "two again", "three", "other file"});
        row("inner chunk is too short", content<std::uint64_t>(8, 31),
            {"one", "three", "other file"});
        row("unknown inner chunk", content<std::uint32_t>(0, 0x6009),
            {"one", "three", "other file"});
        row("inner chunk of zeros", content<std::uint32_t>(0, 0), {"one", "three", "other file"});

        row("page says it is longer than it is", inPage<std::uint16_t>(16, 0xffff),
            {"one", "two", "two again", "three", "other file"});
        row("page ends in its second record's head", inPage<std::uint16_t>(16, 16 + 32 + 20),
            {"one", "two", "three", "other file"});
        row("private area begins behind its end", inPage<std::uint16_t>(18, 0xffff),
            {"one", "two", "two again", "three", "other file"});
        row("private area longer than the page", inPage<std::uint16_t>(18, 1),
            {"one", "two", "two again", "three", "other file"});
        row("record without kind ends the page", inPage<std::uint8_t>(firstRecord, 0),
            {"one", "three", "other file"});
        row("unknown record", inPage<std::uint8_t>(firstRecord, 9),
            {"one", "two again", "three", "other file"});
        row("record says it is longer than the page",
            inPage<std::uint16_t>(firstRecord + 22, 0xffff), {"one", "two", "three", "other file"});
        row("record too short for its fields", inPage<std::uint16_t>(firstRecord + 22, 3),
            {"one", "two again", "three", "other file"});
        row("record that says it has everything", inPage<std::uint16_t>(firstRecord + 2, 0xfffb),
            {"one", "two again", "three", "other file"});
        row("loss too short for its fields", inPage<std::uint8_t>(firstRecord, 7),
            {"one", "two again", "three", "other file"});
        row("record with an activity that is not there",
            inPage<std::uint16_t>(firstRecord + 2, 0x0003),
            {"one", "two again", "three", "other file"});

        row("catalog with too many processes", inCatalog<std::uint16_t>(4, 0xffff),
            {"one", "two", "two again", "three", "other file"});
        row("catalog with its parts out of order", inCatalog<std::uint16_t>(2, 8),
            {noUuid, noUuid, noUuid, noUuid, "other file"});
        row("catalog with processes outside", inCatalog<std::uint16_t>(2, 0xfff0),
            {noUuid, noUuid, noUuid, noUuid, "other file"});
        row("process with an image that is not there",
            inCatalog<std::uint16_t>(process + 4, 0xfff0),
            {noUuid, noUuid, noUuid, noUuid, "other file"});
        row("process with 4 billion images", inCatalog<std::uint32_t>(process + 32, enormous),
            {noUuid, noUuid, noUuid, noUuid, "other file"});
        row("process with 4 billion subsystems", inCatalog<std::uint32_t>(process + 40, enormous),
            {noUuid, noUuid, noUuid, noUuid, "other file"});
        row("catalog of a few bytes",
            [](DamagedStore& s) { s.section().editCatalog = [](Bytes& b) { b.resize(10); }; },
            {noUuid, noUuid, noUuid, noUuid, "other file"});
    }

    void damageCostsWhatItHits()
    {
        QFETCH(Damage, damage);
        QFETCH(QString, expected);
        DamagedStore store;
        damage(store);
        if (!store.files.files.contains(persist))
            store.build();
        QCOMPARE(store.messages(), expected);
    }

    void lyingItems_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::addColumn<std::vector<Item>>("items");
        QTest::addColumn<Edit>("edit"); // of the record; its items begin behind 4 bytes of data
        QTest::addColumn<QString>("expected");
        using Items = std::vector<Item>;
        constexpr std::size_t items = 24 + 4;
        constexpr std::size_t privateItems = 24 + 8; // behind the private range
        const auto add = [](const char* name, const char* format, Items values, Edit edit,
                            const char* expected) {
            QTest::newRow(name) << QByteArray(format) << std::move(values) << std::move(edit)
                                << QString::fromUtf8(expected);
        };
        const auto secret = text("secret", Privacy::Private);
        add("more items than there are", "[%d]", {number<std::int32_t>(7)},
            put<std::uint8_t>(items + 1, 255), "[7]");
        add("payload longer than the record", "[%d]", {number<std::int32_t>(7)},
            put<std::uint8_t>(items + 3, 255), "[<decode: missing data>]");
        add(
            "no room for the number of items", "[%d]", {number<std::int32_t>(7)},
            [](Bytes& b) {
                b.resize(items + 1);
                b[22] = 5;
            },
            "[<decode: missing data>]");
        add(
            "no items at all", "[%d]", {number<std::int32_t>(7)},
            [](Bytes& b) {
                b.resize(items);
                b[22] = 4;
            },
            "[<decode: missing data>]");
        add("private item outside its data", "[%s]", {secret},
            put<std::uint16_t>(privateItems + 4, 0x0100), "[<private>]");
        add("private item longer than its data", "[%s]", {secret},
            put<std::uint16_t>(privateItems + 6, 0x0100), "[secret]");
        add("private range longer than the private area", "[%s]", {secret},
            put<std::uint16_t>(24 + 2, 0x4000), "[<private>]");
    }

    void lyingItems()
    {
        QFETCH(QByteArray, format);
        QFETCH(std::vector<Item>, items);
        QFETCH(Edit, edit);
        QFETCH(QString, expected);
        WrittenStore store;
        Record record = store.message(1, format.toStdString());
        record.items = items;
        record.edit = edit;
        store.addRecords({record, store.message(2, "next")});
        QCOMPARE(store.messages(), expected + QStringLiteral("\nnext"));
    }

    void privateAreaThatIsNone_data()
    {
        QTest::addColumn<Edit>("edit"); // of the page
        QTest::newRow("area that begins at 0") << put<std::uint16_t>(18, 0);
        QTest::newRow("range in front of the area") << put<std::uint16_t>(recordData, 0x0800);
    }

    void privateAreaThatIsNone()
    {
        QFETCH(Edit, edit);
        WrittenStore store;
        Record record = store.message(1, "[%s]");
        record.items = {text("secret", Privacy::Private)};
        Firehose page = store.page({record});
        page.edit = edit;
        store.addChunks({page});
        QCOMPARE(store.messages(), QStringLiteral("[<private>]"));
    }

    void lyingDumps_data()
    {
        using Chunks = std::function<std::vector<Chunk>(WrittenStore&)>;
        QTest::addColumn<Chunks>("chunks");
        QTest::addColumn<QString>("expected");
        const auto add = [](const char* name, Chunks chunks, const char* expected) {
            QTest::newRow(name) << std::move(chunks) << QString::fromUtf8(expected);
        };
        const auto state = [](Edit edit) {
            return [edit](WrittenStore& s) -> std::vector<Chunk> {
                StateDump dump{.process = s.process.key,
                               .time = 1,
                               .dataType = 9,
                               .title = "Title",
                               .data = {1}};
                dump.edit = edit;
                return {dump};
            };
        };
        const auto simple = [](Edit edit) {
            return [edit](WrittenStore& s) -> std::vector<Chunk> {
                return {SimpleDump{.process = s.process.key,
                                   .time = 1,
                                   .subsystem = "sub",
                                   .message = "text",
                                   .edit = edit}};
            };
        };
        const auto oversize = [](Edit edit) {
            return [edit](WrittenStore& s) -> std::vector<Chunk> {
                Oversize items{.process = s.process.key,
                               .time = 1,
                               .reference = 7,
                               .items = {text("found")},
                               .edit = edit};
                Record record = s.message(1, "[%s]");
                record.oversize = 7;
                return {items, s.page({record})};
            };
        };
        const auto trace = [](Edit edit) {
            return [edit](WrittenStore& s) -> std::vector<Chunk> {
                Record record = s.message(1, "%d %d");
                record.kind = RecordKind::Trace;
                record.items = {number<std::int32_t>(1), number<std::int32_t>(2)};
                record.edit = edit;
                return {s.page({record})};
            };
        };
        const auto cut = [](std::size_t size) {
            return [size](Bytes& bytes) { bytes.resize(size); };
        };
        const auto last = [](std::size_t back, std::uint8_t value) {
            return [=](Bytes& bytes) { bytes[bytes.size() - back] = value; };
        };
        add("state with 4 GiB of data", state(put(52, enormous)),
            "Title\n<decode: unsupported decoder: 9>");
        add("state that is cut before its data", state(cut(248)), "Title");
        add("state that is too short", state(cut(247)), "");
        add("state with a title that does not end", state([](Bytes& b) {
                std::fill_n(&b[184], 64, 'x');
                b.resize(248);
            }),
            std::string(64, 'x').c_str());
        add("simple message of 4 GiB", simple(put(80, enormous)), "text");
        add("simple message that is cut", simple(cut(90)), "te");
        add("simple message that is too short", simple(cut(83)), "");
        add("oversize chunk with more public data than it has",
            oversize(put<std::uint16_t>(28, 0xffff)), "[found]");
        add("oversize chunk with more private data than it has",
            oversize(put<std::uint16_t>(30, 0xffff)), "[found]");
        add("oversize chunk without public data", oversize(put<std::uint16_t>(28, 0)),
            "[<decode: missing data>]");
        add("oversize chunk that is too short", oversize(cut(31)), "[<decode: missing data>]");
        add("trace with more values than bytes", trace(last(1, 200)),
            "<decode: missing data> <decode: missing data>");
        add("trace with a value that does not fit", trace(last(2, 8)), "1 <decode: missing data>");
    }

    void lyingDumps()
    {
        QFETCH(std::function<std::vector<Chunk>(WrittenStore&)>, chunks);
        QFETCH(QString, expected);
        WrittenStore store;
        store.addChunks(chunks(store));
        QCOMPARE(store.messages(), expected);
    }
};

TESSEL_TEST(TestStoreDamage)
#include "tst_storedamage.moc"
