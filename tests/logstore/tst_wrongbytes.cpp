// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QFile>
#include <QTest>

using namespace logstore::writer;

namespace {

/// A small store with every kind of record, not compressed, so that a wrong byte hits a field.
class PlainStore : public WrittenStore
{
public:
    PlainStore()
    {
        Record full = message(2, "%s %s %d");
        full.items = {text("public"), text("private", Privacy::Private), number<std::int32_t>(3)};
        full.subsystem = process.subsystem("org.example", "general");
        full.backtrace = Backtrace{{testUuid(1)}, {{0, 1}}};
        Record signpost = message(3, "at %d");
        signpost.kind = RecordKind::Signpost;
        signpost.name = nameAt(image.offset("name"));
        signpost.items = {number<std::int32_t>(1)};
        Record trace1{.kind = RecordKind::Trace, .time = 4, .items = {number<std::int64_t>(1)}};
        trace1.format = inSharedCache(cache.offset(0, "%d"));
        const Record loss{.kind = RecordKind::Loss, .time = 5};
        Record activity = message(6, "activity");
        activity.kind = RecordKind::Activity;
        activity.activity = activity.parentActivity = activity.creator = 7;
        Record large = message(7, "%s");
        large.oversize = 1;
        Oversize oversize{
            .process = process.key, .time = 7, .reference = 1, .items = {text("oversize")}};
        StateDump state{.process = process.key, .time = 8, .title = "state"};
        const std::string_view plist =
            "<plist><dict><key>k</key><array><true/></array></dict></plist>";
        state.data.assign(plist.begin(), plist.end());
        const SimpleDump simple{
            .process = process.key, .time = 9, .subsystem = "s", .message = "m"};
        TraceFile file = trace({ChunkSet{
            {oversize, page({full, signpost, trace1, loss, activity, large}), state, simple},
            Packing{Compression::Stored, 0},
            true,
            {},
            {}}});
        files.add(persist, file);
        files.add("Special/0000000000000001.tracev3",
                  trace({{{page({message(5, "other file")})}}}));
        files.add(image);
        files.add(cache);
        files.add("0000000000000001.timesync", {boot});
    }
};

void writeBytes(const QString& path, const Bytes& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(path));
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

/// Reads every field of every entry; returns how many there are, and whether the other file's is
/// among them.
std::pair<int, bool> readAll(const std::filesystem::path& root)
{
    const auto store = logstore::Store::open(root);
    if (!store)
        return {-1, false};
    int count = 0;
    bool foundOther = false;
    auto stream = store->entries();
    while (const logstore::Entry* entry = stream.next()) {
        ++count;
        const auto texts = {entry->composedMessage(), entry->sender(), entry->subsystem(),
                            entry->signpostName()};
        for (const std::string_view text : texts)
            foundOther = foundOther || text == "other file";
    }
    return {count, foundOther};
}

} // namespace

/// Every byte of a store, wrong or missing.
class TestWrongBytes : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void everyByteMayBeWrong_data()
    {
        QTest::addColumn<QString>("path");
        const PlainStore store;
        QTest::newRow("trace file") << QString::fromUtf8(persist);
        QTest::newRow("time file") << QStringLiteral("timesync/0000000000000001.timesync");
        QTest::newRow("image file")
            << QString::fromStdString(store.files.stringsPath(store.image.uuid));
        QTest::newRow("cache file")
            << QString::fromStdString(store.files.cachePath(store.cache.uuid));
    }

    void everyByteMayBeWrong()
    {
        QFETCH(QString, path);
        PlainStore store;
        const auto root = store.write();
        const QString file = QString::fromStdString((root / path.toStdString()).string());
        const bool ofStrings = !path.startsWith(u"Persist") && !path.startsWith(u"timesync");
        const Bytes good = store.files.files[path.toStdString()];
        for (std::size_t at = 0; at < good.size(); ++at) {
            for (const std::uint8_t flip : Bytes{0x01, 0xff}) {
                Bytes bad = good;
                bad[at] = static_cast<std::uint8_t>(bad[at] ^ flip);
                writeBytes(file, bad);
                const auto [count, foundOther] = readAll(root);
                QVERIFY2(count >= 1 && count < 40,
                         qPrintable(QStringLiteral("byte %1: %2 entries").arg(at).arg(count)));
                QVERIFY2(foundOther || ofStrings, qPrintable(QStringLiteral("byte %1").arg(at)));
            }
        }
    }

    void everyTruncationIsSurvived()
    {
        PlainStore store;
        const auto root = store.write();
        const QString file = QString::fromStdString((root / persist).string());
        const Bytes good = store.files.files[persist];
        int before = 0;
        for (std::size_t size = 0; size <= good.size(); ++size) {
            writeBytes(file, Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)));
            const auto [count, foundOther] = readAll(root);
            QVERIFY2(foundOther, qPrintable(QString::number(size)));
            QVERIFY2(count >= before,
                     qPrintable(QString::number(size))); // no more bytes give fewer entries
            before = count;
        }
        QCOMPARE(before, 2 + 6 + 2);
    }
};

TESSEL_TEST(TestWrongBytes)
#include "tst_wrongbytes.moc"
