// SPDX-License-Identifier: MIT
#include "platform/logstore/storefolders.h"
#include "support/testcase.h"
#include "writtenstore.h"

#include <QTest>

using namespace logstore::writer;

namespace fs = std::filesystem;

/// Where a store's folders may lie, and what they may be called.
class TestStoreFolders : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void placesAndNames_data()
    {
        QTest::addColumn<QString>("logs"); // under the folder that is opened
        QTest::addColumn<QString>("strings");
        QTest::addColumn<bool>("opens");
        const auto row = [](const char* name, const char* logs, const char* strings,
                            bool opens = true) {
            QTest::newRow(name) << utf8(logs) << utf8(strings) << opens;
        };
        row("archive", "", "");
        row("strings beside the logs", "", "../uuidtext");
        row("strings inside", "", "UUIDTEXT");
        row("a Mac's folders", "diagnostics", "uuidtext");
        row("copied in capitals", "Diagnostics", "UUIDText");
        row("disk", "private/var/db/Diagnostics", "private/var/db/UUIDText");
        row("disk of a phone", "Private/Var/DB/diagnostics", "Private/Var/DB/uuidtext");
        row("collected with paths", "var/db/diagnostics", "var/db/uuidtext");
        row("sysdiagnose", "system_logs.logarchive", "system_logs.logarchive");
        row("another archive inside", "mac.logarchive", "mac.logarchive", false);
        row("db folder only", "db/diagnostics", "db/uuidtext", false);
    }
    void placesAndNames()
    {
        QFETCH(QString, logs);
        QFETCH(QString, strings);
        QFETCH(bool, opens);
        QTemporaryDir folder;
        const fs::path root = fs::path(folder.path().toStdString()) / "chosen";
        lay(root, logs.toStdString(), strings.toStdString());
        const auto store = logstore::Store::open(root);
        QCOMPARE(store.has_value(), opens);
        if (opens)
            QCOMPARE(messagesOf(*store), QStringList{QStringLiteral("text")});
        const auto archive = logstore::archiveInside(root);
        QCOMPARE(archive.has_value(), logs == QStringLiteral("mac.logarchive"));
        QVERIFY(!archive || logstore::Store::open(*archive));
    }

    void foldersThatDifferInCaseOnly()
    {
        WrittenStore store;
        store.addRecords({store.message(1, "one")});
        const auto file = [&](std::uint64_t time, const char* text) {
            return store.trace({{{store.page({store.message(time, text)})}}});
        };
        store.files.add("PERSIST/0000000000000002.TRACEV3", file(2, "two"));
        store.files.add("signPost/0000000000000003.tracev3", file(3, "three"));
        store.files.add("LogData.livedata.tracev3", file(4, "four"));
        QCOMPARE(store.messages(), lines({"one", "two", "three", "four"}));
    }

private:
    /// A store of one message with its string, a half of the names in other case.
    static void lay(const fs::path& root, const fs::path& logs, const fs::path& strings)
    {
        WrittenStore store;
        store.addRecords({store.message(1, "text")});
        const fs::path whole = store.write();
        fs::create_directories(root / logs);
        fs::create_directories(root / strings);
        fs::rename(whole / "Persist", root / logs / "persist");
        fs::rename(whole / "timesync", root / logs / "TimeSync");
        for (const auto& item : fs::directory_iterator(whole))
            fs::rename(item.path(), root / strings / item.path().filename());
    }

    static QStringList messagesOf(const logstore::Store& store)
    {
        QStringList messages;
        auto stream = store.entries();
        while (const logstore::Entry* entry = stream.next())
            if (entry->kind() != logstore::EntryKind::Boundary)
                messages += QString::fromUtf8(entry->composedMessage().data(),
                                              qsizetype(entry->composedMessage().size()));
        return messages;
    }
};

TESSEL_TEST(TestStoreFolders)
#include "tst_storefolders.moc"
