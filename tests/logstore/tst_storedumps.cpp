// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QTest>

using namespace logstore::writer;
using logstore::EntryKind;
using logstore::EventType;
using logstore::Level;
using logstore::StoreCategory;

namespace {

Bytes plist(const char* inner)
{
    const std::string text =
        std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">") + inner
        + "</plist>";
    return Bytes(text.begin(), text.end());
}

/// So many arrays one in the other, and how they are shown.
Bytes nestedArrays(int levels)
{
    std::string inner = "<array/>";
    for (int level = 1; level < levels; ++level)
        inner = "<array>" + inner + "</array>";
    return plist(inner.c_str());
}
std::string shownArrays(int levels, int level = 0)
{
    const std::string pad(std::size_t(level) * 4, ' ');
    const std::string inner =
        levels == 1 ? "" : pad + "    " + shownArrays(levels - 1, level + 1) + "\n";
    return pad + "(\n" + inner + pad + ")";
}

} // namespace

/// State dumps and simple dumps.
class TestStoreDumps : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void stateDumps_data()
    {
        QTest::addColumn<StateDump>("dump");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, std::uint32_t type, Bytes data, const char* message) {
            StateDump dump{.time = 1, .dataType = type, .title = "Title"};
            dump.data = std::move(data);
            QTest::newRow(name) << dump << utf8(message);
        };
        row("no data", PropertyListData, {}, "Title");
        row("text", PropertyListData, plist("<string>one\ntwo \"three\"</string>"),
            "Title\none\ntwo \"three\"");
        row("empty text", PropertyListData, plist("<string></string>"), "Title");
        row("number", PropertyListData, plist("<integer>-5</integer>"), "Title\n-5");
        row("dictionary", PropertyListData, plist(R"(<dict>
            <key>when</key><date>2023-11-14T22:13:20Z</date>
            <key>outer</key><dict>
                <key>word</key><string>alnum9</string>
                <key>inner</key><array>
                    <dict><key>deep</key><string>a_b</string></dict>
                    <array/>
                </array>
            </dict>
            <key>empty</key><string/>
        </dict>)"),
            R"(Title
{
    empty = "";
    outer =     {
        inner =         (
                        {
                deep = "a_b";
            },
                        (
            )
        );
        word = alnum9;
    };
    when = "2023-11-14 22:13:20 +0000";
})");
        row("values", PropertyListData, plist(R"(<dict>
            <key>a</key><true/><key>b</key><false/><key>c</key><integer>-1</integer>
            <key>d</key><real>0.5</real><key>e</key><real>3</real><key>f</key><data>AQID</data>
            <key>g</key><string>ü&#10;</string>
        </dict>)"),
            R"(Title
{
    a = 1;
    b = 0;
    c = "-1";
    d = "0.5";
    e = 3;
    f = {length = 3, bytes = 0x010203};
    g = "\U00fc\n";
})");
        row("binary", PropertyListData,
            ByteBuilder()
                .text("bplist00")
                .u8(0x53)
                .text("abc")
                .u8(8)
                .zeros(6)
                .u8(1)
                .u8(1)
                .zeros(7)
                .u8(1)
                .zeros(8)
                .zeros(7)
                .u8(12)
                .take(),
            "Title\nabc");
        row("not readable", PropertyListData, {1, 2, 3}, "Title\n<decode: unsupported value>");
        row("nested as deep as is read", PropertyListData, nestedArrays(64),
            ("Title\n" + shownArrays(64)).c_str());
        row("nested too deep", PropertyListData, nestedArrays(65),
            "Title\n<decode: unsupported value>");
        row("protocol buffer", ProtocolBufferData, {8, 1},
            "Title\n<decode: unsupported decoder: protobuf>");
        row("unknown type", 9, {1}, "Title\n<decode: unsupported decoder: 9>");
        StateDump custom{.time = 1, .dataType = CustomData, .decoderLibrary = "location"};
        custom.decoderType = "_CLClientManagerStateTrackerState";
        custom.title = "Title";
        custom.data = {1, 0, 0, 0, 1, 0, 0, 0};
        QTest::newRow("decoder that is known")
            << custom
            << utf8("Title\n{\"locationRestricted\":true,\"locationServicesEnabledStatus\":1}");
        custom.decoderType = "other";
        QTest::newRow("decoder that is not known")
            << custom << utf8("Title\n<decode: unsupported decoder: location:other>");
    }

    void stateDumps()
    {
        QFETCH(StateDump, dump);
        QFETCH(QString, message);
        WrittenStore store;
        dump.process = store.process.key;
        store.addChunks({dump});
        QCOMPARE(store.messages(), message);
    }

    void stateDumpFields()
    {
        WrittenStore store;
        StateDump dump{.process = store.process.key,
                       .timeToLive = 3,
                       .time = 44,
                       .activity = 12,
                       .sender = store.image.uuid};
        dump.title = "Title";
        store.addChunks({dump});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].kind, EntryKind::Other);
        QCOMPARE(entries[0].event, EventType::StateDump);
        QCOMPARE(entries[0].time, WrittenStore::bootTime + 44);
        QCOMPARE(entries[0].activity, std::uint64_t(12));
        QCOMPARE(entries[0].processIdentifier, 77);
        QCOMPARE(entries[0].senderPath, utf8("/usr/bin/tester"));
        QCOMPARE(entries[0].storeCategory, StoreCategory::LongTerm3);
    }

    void simpleDumps()
    {
        WrittenStore store;
        SimpleDump dump{.process = store.process.key,
                        .timeToLive = 7,
                        .type = ErrorMessage,
                        .time = 44,
                        .thread = 9};
        dump.sender = store.image.uuid;
        dump.subsystem = "org.example";
        dump.message = "complete: 100%d %s";
        store.addChunks({dump});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].kind, EntryKind::Log);
        QCOMPARE(entries[0].event, EventType::SimpleDump);
        QCOMPARE(entries[0].level, Level::Error);
        QCOMPARE(entries[0].message, utf8("complete: 100%d %s"));
        QCOMPARE(entries[0].format, QString());
        QCOMPARE(entries[0].subsystem, utf8("org.example"));
        QCOMPARE(entries[0].category, QString());
        QCOMPARE(entries[0].sender, utf8("tester"));
        QCOMPARE(entries[0].thread, std::uint64_t(9));
        QCOMPARE(entries[0].storeCategory, StoreCategory::LongTerm7);
    }

    void senderOfADumpMayStandInTheCache()
    {
        WrittenStore store;
        SimpleDump dump{
            .process = store.process.key, .time = 1, .sender = store.cache.images[0].uuid};
        dump.sharedCache = store.cache.uuid;
        dump.message = "hello";
        StateDump state{
            .process = store.process.key, .time = 2, .sender = store.cache.images[0].uuid};
        store.addChunks({dump, state});
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(2));
        QCOMPARE(entries[0].senderPath, utf8("/usr/lib/libfirst.dylib"));
        QCOMPARE(entries[1].senderPath, utf8("/usr/lib/libfirst.dylib"));
    }
};

TESSEL_TEST(TestStoreDumps)
#include "tst_storedumps.moc"
