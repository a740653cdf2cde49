// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"
#include "support/testcase.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <unistd.h>

using namespace logstore::writer;
using logstore::ProblemKind;
using logstore::StoreOrigin;
using Hit = std::function<void(WrittenStore&)>;

/// Damage of the files beside the records, and folders that are no store.
class TestDamagedFiles : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void damagedStringFiles_data()
    {
        QTest::addColumn<Edit>("ofImage");
        QTest::addColumn<Edit>("ofCache");
        QTest::addColumn<QString>(
            "expected"); // a string of the image, one of the cache, the sender of that
        const auto add = [](const char* name, Edit image, Edit cache,
                            std::initializer_list<const char*> expected) {
            QTest::newRow(name) << std::move(image) << std::move(cache) << lines(expected);
        };
        const Edit none = [](Bytes&) {};
        const auto cut = [](std::size_t size) {
            return [size](Bytes& bytes) { bytes.resize(size); };
        };
        constexpr auto noUuid = "<compose failure [UUID]>";
        constexpr auto noSharedUuid = "<compose failure [shared UUID]>";
        constexpr auto noOffset = "<Invalid shared cache format string offset>";
        constexpr std::size_t range = 16;
        constexpr std::size_t imageEntry = range + 24;
        add("nothing", none, none, {"in image", "in cache", "libfirst.dylib"});
        add("image file is empty", cut(0), none, {noUuid, "in cache", "libfirst.dylib"});
        add("image file of another kind", put(0, enormous), none,
            {noUuid, "in cache", "libfirst.dylib"});
        add("image file with 4 billion entries", put(12, enormous), none,
            {noUuid, "in cache", "libfirst.dylib"});
        add("image file cut in its table", cut(20), none, {noUuid, "in cache", "libfirst.dylib"});
        add("image file cut in a string", cut(16 + 8 + 4), none,
            {"in i", "in cache", "libfirst.dylib"});
        add("cache file is empty", none, cut(0), {"in image", noSharedUuid, ""});
        add("cache file of an unknown version", none, put<std::uint16_t>(4, 3),
            {"in image", noSharedUuid, ""});
        add("cache file with 4 billion ranges", none, put(8, enormous),
            {"in image", noSharedUuid, ""});
        add("cache file with 4 billion images", none, put(12, enormous),
            {"in image", noSharedUuid, ""});
        add("cache file cut in its tables", none, cut(40), {"in image", noSharedUuid, ""});
        add("range outside the cache file", none, put(range + 8, enormous),
            {"in image", noOffset, ""});
        add("range longer than the cache file", none, put(range + 12, enormous),
            {"in image", "in cache", "libfirst.dylib"});
        add("range of an image that is not there", none, put<std::uint64_t>(range + 16, UINT64_MAX),
            {"in image", "in cache", ""});
        add("path outside the cache file", none, put(imageEntry + 28, enormous),
            {"in image", "in cache", ""});
    }

    void damagedStringFiles()
    {
        QFETCH(Edit, ofImage);
        QFETCH(Edit, ofCache);
        QFETCH(QString, expected);
        WrittenStore store;
        Record inCache{.time = 2};
        inCache.format = inSharedCache(store.cache.offset(0, "in cache"));
        store.addRecords({store.message(1, "in image"), inCache});
        store.files.add(store.image);
        store.files.add(store.cache);
        ofImage(store.files.files[store.files.stringsPath(store.image.uuid)]);
        ofCache(store.files.files[store.files.cachePath(store.cache.uuid)]);
        QCOMPARE(store.messages() + QLatin1Char('\n') + store.entries().at(1).sender, expected);
    }

    void damagedTimeFiles_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<qint64>("wall"); // of a record behind both sync records
        constexpr std::int64_t at = WrittenStore::bootTime;
        constexpr std::size_t firstSync = 48;
        constexpr std::size_t secondSync = firstSync + 32;
        const auto cut = [](std::size_t size) {
            return [size](Bytes& bytes) { bytes.resize(size); };
        };
        const std::int64_t ofHeader = at + 900 + 50;
        QTest::newRow("nothing") << Edit([](Bytes&) {}) << qint64(at + 2050);
        QTest::newRow("empty") << Edit(cut(0)) << qint64(ofHeader);
        QTest::newRow("cut in the boot record") << Edit(cut(47)) << qint64(ofHeader);
        QTest::newRow("cut in a sync record") << Edit(cut(secondSync + 31)) << qint64(at + 1150);
        QTest::newRow("size of zero") << put<std::uint16_t>(secondSync + 2, 0) << qint64(at + 1150);
        QTest::newRow("unknown signature")
            << put<std::uint16_t>(secondSync, 0x1234) << qint64(at + 1150);
        QTest::newRow("record longer than the file")
            << put<std::uint16_t>(secondSync + 2, 0xffff) << qint64(at + 1150);
        QTest::newRow("sync records without a boot")
            << Edit([](Bytes& bytes) { bytes.erase(bytes.begin(), bytes.begin() + 48); })
            << qint64(ofHeader);
        QTest::newRow("wall time that overflows")
            << put<std::int64_t>(secondSync + 16, INT64_MAX - 5) << qint64(INT64_MAX);
    }

    void damagedTimeFiles()
    {
        QFETCH(Edit, edit);
        QFETCH(qint64, wall);
        WrittenStore store;
        store.boot.syncs = {{100, WrittenStore::bootTime + 1000},
                            {200, WrittenStore::bootTime + 2000}};
        TraceFile file = store.trace({{{store.page({store.message(250, "hello")})}}});
        file.header.wallTime = WrittenStore::bootTime + 1000;
        file.header.continuousTime = 300;
        store.files.add(persist, file);
        store.files.add("0000000000000001.timesync", {store.boot});
        edit(store.files.files["timesync/0000000000000001.timesync"]);
        const auto entries = store.entries();
        QCOMPARE(entries.size(), std::size_t(1));
        QCOMPARE(entries[0].time, wall);
    }

    void strangeNamesAreIgnored()
    {
        WrittenStore store;
        store.addRecords({store.message(1, "one"), store.message(2, "two")});
        store.files.add("Persist/copy of one.tracev3",
                        store.trace({{{store.page({store.message(1, "one")})}}}));
        store.files.add("another.timesync", {Boot{store.boot.uuid, 7, 1, 0, {}}});
        for (const char* name :
             {"Persist/._0000000000000001.tracev3", "Persist/readme.txt",
              "Other/0000000000000001.tracev3", "timesync/._0000000000000001.timesync", "11/._rest",
              "dsc/._name", ".DS_Store", "Extra/x"})
            store.files.addText(name, "of no use");
        QCOMPARE(store.messages(), lines({"one", "two"}));
    }

    void linksOutOfTheStoreAreNotFollowed()
    {
        WrittenStore outside;
        outside.addRecords({outside.message(1, "outside")});
        const auto elsewhere = outside.write();
        WrittenStore store;
        store.addRecords({store.message(1, "inside")});
        const auto root = store.write();
        std::filesystem::create_directories(root / "Special");
        std::filesystem::create_symlink(elsewhere / persist,
                                        root / "Special/0000000000000002.tracev3");
        std::filesystem::create_directory_symlink(elsewhere / "Persist", root / "Signpost");
        QCOMPARE(store.messages(), QStringLiteral("inside"));
    }

    void linkedLogFolders_data()
    {
        QTest::addColumn<QString>("linked");
        QTest::addColumn<StoreOrigin>("origin");
        QTest::addColumn<QString>("message"); // of its entry, empty when it does not open
        const auto text = QStringLiteral("text");
        const auto noUuid = QStringLiteral("<compose failure [UUID]>");
        const auto strings = QStringLiteral("uuidtext");
        const auto logs = QStringLiteral("diagnostics");
        QTest::newRow("none, handed over") << QString() << StoreOrigin::HandedOver << text;
        QTest::newRow("strings, handed over") << strings << StoreOrigin::HandedOver << noUuid;
        QTest::newRow("logs, handed over") << logs << StoreOrigin::HandedOver << QString();
        QTest::newRow("strings, the system's") << strings << StoreOrigin::System << text;
        QTest::newRow("logs, the system's") << logs << StoreOrigin::System << text;
    }

    void linkedLogFolders()
    {
        QFETCH(QString, linked);
        QFETCH(StoreOrigin, origin);
        QFETCH(QString, message);
        WrittenStore store;
        store.files.layout = StoreLayout::Live;
        store.addRecords({store.message(1, "text")});
        const auto root = store.write();
        QTemporaryDir elsewhere;
        if (!linked.isEmpty()) {
            const std::filesystem::path moved = elsewhere.filePath(linked).toStdString();
            std::filesystem::rename(root / linked.toStdString(), moved);
            std::filesystem::create_directory_symlink(moved, root / linked.toStdString());
        }
        const auto opened = logstore::Store::open(root, origin);
        QCOMPARE(opened.has_value(), !message.isEmpty());
        if (!opened)
            return;
        auto stream = opened->entries(WrittenStore::bootTime + 1);
        const logstore::Entry* entry = stream.next();
        QVERIFY(entry);
        QCOMPARE(entry->composedMessage(), std::string_view(message.toStdString()));
    }

    void openFailsWithAReason_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<ProblemKind>("kind");
        QTest::addColumn<int>("error");
        const auto row = [](const char* what, const char* name, ProblemKind kind, int error = 0) {
            QTest::newRow(what) << utf8(name) << kind << error;
        };
        row("missing", "missing.logarchive", ProblemKind::UnreadableFolder, ENOENT);
        row("a file", "file.logarchive", ProblemKind::NotAFolder);
        row("an empty folder", "empty.logarchive", ProblemKind::NotAStore);
        row("a folder of other things", "other.logarchive", ProblemKind::NotAStore);
        row("no trace files", "bare.logarchive", ProblemKind::NotAStore);
        row("folders in place of trace files", "folders.logarchive", ProblemKind::UnreadableFile);
        if (::geteuid() == 0)
            return; // for whom everything may be read
        row("logs that may not be listed", "listed.logarchive", ProblemKind::UnreadableFolder,
            EACCES);
        row("logs that may not be looked at", "looked.logarchive", ProblemKind::UnreadableFolder,
            EACCES);
    }

    void openFailsWithAReason()
    {
        QFETCH(QString, name);
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("file.logarchive")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        for (const char* path :
             {"empty.logarchive", "other.logarchive/Pictures", "bare.logarchive/Persist",
              "folders.logarchive/Persist/0000000000000001.tracev3", "listed.logarchive/Persist",
              "looked.logarchive/diagnostics/Persist"})
            QDir(folder.path()).mkpath(utf8(path));
        const auto shut = [&folder](const char* path, QFile::Permissions permissions) {
            QFile::setPermissions(folder.filePath(utf8(path)), permissions);
        };
        shut("listed.logarchive/Persist", {});
        shut("looked.logarchive/diagnostics", QFile::ReadOwner);
        const QString path = folder.filePath(name);
        const auto store = logstore::Store::open(path.toStdString());
        shut("listed.logarchive/Persist", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        shut("looked.logarchive/diagnostics",
             QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(!store);
        QTEST(store.error().kind, "kind");
        QTEST(store.error().error, "error");
        QVERIFY(QString::fromStdString(store.error().name)
                    .startsWith(name.startsWith(u"folders") ? QStringLiteral("Persist/") : path));
    }

    void tellsWhatCouldNotBeRead_data()
    {
        QTest::addColumn<Hit>("hit");
        QTest::addColumn<QString>("name");
        QTest::addColumn<std::optional<ProblemKind>>("kind");
        const auto row = [](const char* what, Hit hit, std::string_view name,
                            std::optional<ProblemKind> kind) {
            QTest::newRow(what) << std::move(hit)
                                << QString::fromUtf8(name.data(), qsizetype(name.size())) << kind;
        };
        const auto inFile = [](std::string path, Edit edit) {
            return [=](WrittenStore& store) { edit(store.files.files[path]); };
        };
        const auto text = [](const char* path) {
            return [path](WrittenStore& store) { store.files.addText(path, "no log at all"); };
        };
        const std::string timeFile = "timesync/0000000000000001.timesync";
        const WrittenStore names;
        const std::string strings = names.files.stringsPath(names.image.uuid);
        const std::string other = "Special/0000000000000002.tracev3";
        constexpr std::size_t firstSize = 8; // of the header
        row(
            "nothing", [](WrittenStore&) {}, "", std::nullopt);
        row(
            "an empty file", [=](WrittenStore& s) { s.files.addText(other, ""); }, "",
            std::nullopt);
        row("zeros after the last chunk",
            inFile(persist, [](Bytes& b) { b.resize(b.size() + 4096); }), "", std::nullopt);
        row("wrong size", inFile(persist, put<std::uint64_t>(firstSize, 1U << 20)), persist,
            ProblemKind::DamagedChunks);
        row("cut in a chunk set", inFile(persist, [](Bytes& b) { b.resize(b.size() - 16); }),
            persist, ProblemKind::DamagedChunks);
        row("another compression",
            inFile(persist,
                   [](Bytes& b) {
                       constexpr std::string_view lz4 = "bv4";
                       *(std::search(b.begin(), b.end(), lz4.begin(), lz4.end()) + 2) = 'x';
                   }),
            persist, ProblemKind::UnknownCompression);
        row("no trace file", text("Special/0000000000000002.tracev3"), other,
            ProblemKind::NotATraceFile);
        row("folder in place of a file", text("Special/0000000000000002.tracev3/file"), other,
            ProblemKind::UnreadableFile);
        row("damaged time file", inFile(timeFile, put<std::uint16_t>(0, 7)), timeFile,
            ProblemKind::DamagedTimes);
        row("damaged string file", inFile(strings, put<std::uint32_t>(0, 7)), strings,
            ProblemKind::DamagedStrings);
        row(
            "no string file", [](WrittenStore& s) { s.process.mainImage = testUuid(0x77); },
            testUuid(0x77).text(), ProblemKind::MissingStrings);
    }

    void tellsWhatCouldNotBeRead()
    {
        QFETCH(Hit, hit);
        WrittenStore store;
        if (QByteArray(QTest::currentDataTag()) == "no string file")
            hit(store);
        store.addRecords({store.message(1, "text")});
        store.files.add(store.image);
        store.files.add(store.cache);
        store.files.add("0000000000000001.timesync", {store.boot});
        hit(store);
        const auto opened = logstore::Store::open(store.write());
        QVERIFY(opened);
        auto stream = opened->entries();
        while (const logstore::Entry* entry = stream.next())
            QVERIFY(entry->composedMessage().data());
        QFETCH(std::optional<ProblemKind>, kind);
        const auto& problems = opened->problems().list();
        QCOMPARE(problems.size(), std::size_t(kind ? 1 : 0));
        if (!kind)
            return;
        QCOMPARE(problems[0].kind, *kind);
        QTEST(QString::fromStdString(problems[0].name), "name");
    }

    void openingIsWatched()
    {
        WrittenStore store;
        store.addRecords({store.message(1, "text")});
        const auto root = store.write();
        double reached = 0;
        const auto watch = [&reached](double fraction) {
            const bool isForward = fraction >= reached && fraction <= 1;
            reached = fraction;
            return isForward;
        };
        QVERIFY(logstore::Store::open(root, StoreOrigin::HandedOver, watch));
        QCOMPARE(reached, 1.0);
        const auto cancelled =
            logstore::Store::open(root, StoreOrigin::HandedOver, [](double) { return false; });
        QVERIFY(!cancelled);
        QCOMPARE(cancelled.error().kind, ProblemKind::Cancelled);
    }
};

TESSEL_TEST(TestDamagedFiles)
#include "tst_damagedfiles.moc"
