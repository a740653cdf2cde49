// SPDX-License-Identifier: MIT
#include "logstore/memorypeak.h"
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QSet>
#include <QTest>

using namespace logstore::writer;

namespace {

/// Looks at everything and wants nothing.
class NothingFits final : public logstore::EntryFilter
{
public:
    bool matches(const logstore::Entry& entry) const override
    {
        return entry.composedMessage().size() + entry.signpostName().size() > SIZE_MAX / 2;
    }
};

using Hostile = std::function<void(WrittenStore&)>;

/// A string file without zero bytes, and records that name many places in it.
void onePiece(WrittenStore& store, std::string_view piece, std::uint32_t pageCount, RecordKind kind)
{
    std::string text;
    while (text.size() < (std::size_t{1} << 18))
        text += piece;
    store.image.entries = {{0, Bytes(text.begin(), text.end())}};
    ChunkSet set;
    for (std::uint32_t page = 0; page < pageCount; ++page) {
        std::vector<Record> records;
        for (std::uint32_t i = page * 50; i < page * 50 + 50; ++i) {
            Record record{.kind = kind, .time = i};
            record.format = inMain(i * 60);
            if (kind == RecordKind::Signpost)
                record.name = nameAt(i * 60);
            records.push_back(record);
        }
        set.chunks.push_back(store.page(records));
    }
    store.files.add(persist, store.trace({set}));
}

void manyOfOneReference(WrittenStore& store)
{
    ChunkSet set;
    for (std::uint64_t time = 0; time < 60'000; ++time)
        set.chunks.push_back(Oversize{.process = store.process.key, .time = time, .reference = 1});
    store.files.add(persist, store.trace({set}));
}

void dumpOf(WrittenStore& store, const std::string& text)
{
    StateDump dump{.process = store.process.key, .dataType = PropertyListData};
    dump.data.assign(text.begin(), text.end());
    store.addChunks({dump});
}

} // namespace

/// Stores that ask for much: what is held stays small, and nothing is lost for it.
class TestStoreLimits : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void littleFilesTakeLittleMemory_data()
    {
        QTest::addColumn<Hostile>("hostile");
        const auto row = [](const char* name, Hostile hostile) {
            QTest::newRow(name) << std::move(hostile);
        };
        const auto piece = [&row](const char* name, const char* text, std::uint32_t pageCount,
                                  RecordKind kind = RecordKind::Log) {
            row(name, [=](WrittenStore& store) { onePiece(store, text, pageCount, kind); });
        };
        piece("strings without end", "text ", 60);
        piece("conversions without end", "%d", 1);
        piece("decorations without end", "%{bool,", 4);
        piece("braces without end", "%{", 4);
        piece("names without end", "name ", 60, RecordKind::Signpost);
        row("many oversize chunks of one reference", manyOfOneReference);
        row("values of a property list without end", [](WrittenStore& s) {
            std::string text = "<plist><array>";
            for (int i = 0; i < 3'000'000; ++i)
                text += "<true/>";
            dumpOf(s, text + "</array>");
        });
        row("ampersands without end", [](WrittenStore& s) {
            dumpOf(s, "<plist><string>" + std::string(1 << 20, '&') + "</string>");
        });
    }

    void littleFilesTakeLittleMemory()
    {
        QFETCH(Hostile, hostile);
        std::filesystem::path root;
        WrittenStore store;
        hostile(store);
        root = store.write();
        const MemoryPeak peak;
        const auto opened = logstore::Store::open(root);
        QVERIFY(opened);
        auto stream = opened->entries(logstore::Store::beginning, std::make_shared<NothingFits>());
        QVERIFY(!stream.next());
        QVERIFY2(peak.bytes() < std::size_t{100} << 20, qPrintable(QString::number(peak.bytes())));
    }

    void filesMayVanish()
    {
        WrittenStore store;
        constexpr int fileCount = 70; // more than are open at once
        for (int i = 0; i < fileCount; ++i)
            store.files.add("Persist/" + logFileName(std::size_t(i), "tracev3"),
                            store.trace({{{store.page({store.message(
                                std::uint64_t(i), "file " + std::to_string(i))})}}}));
        const auto root = store.write();
        const auto opened = logstore::Store::open(root);
        QVERIFY(opened);
        auto stream = opened->entries(WrittenStore::bootTime);
        QVERIFY(stream.next());
        std::filesystem::remove_all(root / "Persist");
        QSet<QByteArray> messages;
        while (const logstore::Entry* entry = stream.next()) {
            const std::string_view text = entry->composedMessage();
            const QByteArray message(text.data(), qsizetype(text.size()));
            QVERIFY2(!messages.contains(message), message.constData());
            messages.insert(message);
        }
        QVERIFY(messages.size() > 50); // those still open are read
        QCOMPARE(messages.size() + qsizetype(opened->problems().list().size()),
                 qsizetype(fileCount)); // the others are told
    }

    void oversizeItemsThatWaitLong_data()
    {
        QTest::addColumn<bool>("reversed");
        QTest::newRow("in the order of their records") << false;
        QTest::newRow("in the opposite order") << true;
    }

    /// All stand in the set that is opened first; they take more room than is kept.
    void oversizeItemsThatWaitLong()
    {
        QFETCH(bool, reversed);
        WrittenStore store;
        constexpr std::uint32_t count = 300;
        ChunkSet early{{store.page({store.message(1, "early")})}};
        std::vector<ChunkSet> sets(1);
        for (std::uint32_t i = 0; i < count; ++i) {
            Oversize oversize{.process = store.process.key, .time = 100 + i, .reference = i};
            const std::string spaces(30'000, ' ');
            oversize.items = {text(std::to_string(i) + spaces), text(spaces)};
            early.chunks.insert(reversed ? early.chunks.begin() : early.chunks.end(), oversize);
            Record record = store.message(100 + i, "%s");
            record.oversize = i;
            sets.push_back({{store.page({record})}});
        }
        sets[0] = early;
        store.files.add(persist, store.trace(sets));
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(count + 1));
        for (std::uint32_t i = 0; i < count; ++i)
            QCOMPARE(entries[i + 1].message.trimmed(), QString::number(i));
    }

    void largeSetsThatTakeTurns()
    {
        WrittenStore store;
        constexpr std::uint64_t setCount = 3;
        constexpr std::uint64_t perSet = 1000;
        std::vector<ChunkSet> sets;
        for (std::uint64_t number = 0; number < setCount; ++number) {
            ChunkSet set{{RawChunk{0x6009, Bytes(std::size_t{12} << 20)}}};
            for (std::uint64_t i = 0; i < perSet; ++i)
                set.chunks.push_back(store.page({store.message(number + i * setCount, "turn")}));
            sets.push_back(std::move(set));
        }
        store.files.add(persist, store.trace(sets));
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(setCount * perSet));
        for (std::size_t i = 0; i < entries.size(); ++i)
            QCOMPARE(entries[i].continuousTime, std::uint64_t(i));
    }
};

TESSEL_TEST(TestStoreLimits)
#include "tst_storelimits.moc"
