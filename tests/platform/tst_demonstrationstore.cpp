// SPDX-License-Identifier: MIT
#include "platform/demonstrationstore.h"
#include "platform/logstore/store.h"
#include "support/testcase.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using logstore::Entry;
using logstore::EntryKind;
using logstore::EventType;
using logstore::Level;

namespace {

constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t now = 1'764'000'123'456'789'012;

bool contains(std::string_view text, const char* part)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()))
        .contains(QString::fromUtf8(part), Qt::CaseInsensitive);
}

QMap<QString, QByteArray> filesBelow(const QString& root)
{
    QMap<QString, QByteArray> result;
    for (QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            result.insert(file.fileName().mid(root.size()), file.readAll());
    }
    return result;
}

} // namespace

class TestDemonstrationStore : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(DemonstrationStore(m_folder.path().toStdString()).writeUntil(now));
    }

    void holdsTheLastHour()
    {
        const auto any = [](const Entry&) { return true; };
        const int all = count(logstore::Store::beginning, INT64_MAX, any);
        QVERIFY2(all > 2000 && all < 10'000, qPrintable(QString::number(all)));
        QCOMPARE(count(now + 1, INT64_MAX, any), 0);
        QVERIFY(count(now - 2 * second, now + 1, any) >= 20);
        for (int secondsAgo = 300; secondsAgo >= 5; secondsAgo -= 5)
            QVERIFY2(count(now - secondsAgo * second, now - (secondsAgo - 5) * second, any) >= 15,
                     qPrintable(QString::number(secondsAgo)));
        QVERIFY(count(now - 3600 * second, now - 3300 * second, any) > 50);
    }

    void everyMessageIsWhole()
    {
        const auto broken = [](const Entry& entry) {
            const auto message = entry.composedMessage();
            return message.empty() || contains(message, "<decode") || contains(message, "<compose")
                   || contains(message, "<Invalid");
        };
        QCOMPARE(count(logstore::Store::beginning, INT64_MAX, broken), 0);
        const auto nameless = [](const Entry& entry) {
            return entry.kind() != EntryKind::Boundary
                   && (!entry.hasProcess() || entry.process().empty());
        };
        QCOMPARE(count(logstore::Store::beginning, INT64_MAX, nameless), 0);
    }

    void holdsEveryKind_data()
    {
        QTest::addColumn<Test>("test");
        const auto kind = [](EventType type) {
            return Test([type](const Entry& e) { return e.event() == type; });
        };
        const auto level = [](Level wanted) {
            return Test([wanted](const Entry& e) {
                return e.event() == EventType::Log && e.level() == wanted;
            });
        };
        QTest::newRow("trace") << kind(EventType::Trace);
        QTest::newRow("simple dump") << kind(EventType::SimpleDump);
        QTest::newRow("user action") << kind(EventType::UserAction);
        QTest::newRow("signpost") << kind(EventType::Signpost);
        QTest::newRow("loss") << kind(EventType::Loss);
        QTest::newRow("state dump") << kind(EventType::StateDump);
        QTest::newRow("clock correction") << kind(EventType::TimeSync);
        QTest::newRow("debug") << level(Level::Debug);
        QTest::newRow("info") << level(Level::Info);
        QTest::newRow("notice") << level(Level::Notice);
        QTest::newRow("error") << level(Level::Error);
        QTest::newRow("fault") << level(Level::Fault);
        QTest::newRow("activity with a parent")
            << Test([](const Entry& e) { return e.parentActivityIdentifier() != 0; });
        QTest::newRow("message in an activity") << Test([](const Entry& e) {
            return e.kind() == EntryKind::Log && e.activityIdentifier() != 0;
        });
        QTest::newRow("begin of an interval") << Test([](const Entry& e) {
            return e.signpostType() == logstore::SignpostType::IntervalBegin
                   && e.signpostName() == "Draw frame";
        });
        QTest::newRow("end of an interval") << Test(
            [](const Entry& e) { return e.signpostType() == logstore::SignpostType::IntervalEnd; });
        QTest::newRow("redacted argument")
            << Test([](const Entry& e) { return contains(e.composedMessage(), "<private>"); });
        QTest::newRow("masked argument")
            << Test([](const Entry& e) { return contains(e.composedMessage(), "<mask.hash: '"); });
        QTest::newRow("long message")
            << Test([](const Entry& e) { return e.composedMessage().size() > 1500; });
        QTest::newRow("message of several lines")
            << Test([](const Entry& e) { return contains(e.composedMessage(), "\n\t"); });
        QTest::newRow("Unicode") << Test(
            [](const Entry& e) { return contains(e.composedMessage(), "🎉"); });
        QTest::newRow("kernel extension")
            << Test([](const Entry& e) { return e.sender() == "DemonstrationStorage"; });
        QTest::newRow("kept in memory only") << Test(
            [](const Entry& e) { return e.storeCategory() == logstore::StoreCategory::ShortTerm; });
    }

    void holdsEveryKind()
    {
        QFETCH(Test, test);
        QVERIFY(count(logstore::Store::beginning, INT64_MAX, test) > 0);
    }

    void holdsSeveralBoots()
    {
        QSet<QString> boots;
        std::int64_t before = INT64_MIN;
        auto stream = open().entries();
        while (const Entry* entry = stream.next()) {
            boots.insert(QString::fromStdString(entry->bootUuid().text()));
            QVERIFY(entry->time() >= before);
            before = entry->time();
        }
        QCOMPARE(boots.size(), 3);
    }

    void toolsFindTheirFiles()
    {
        QDir diagnostics(m_folder.filePath(QStringLiteral("diagnostics")));
        for (const char* folder : {"Persist", "Special", "Signpost", "HighVolume", "timesync"})
            QVERIFY2(!QDir(diagnostics.filePath(QString::fromLatin1(folder))).isEmpty(), folder);
        QVERIFY(diagnostics.exists(QStringLiteral("version.plist")));
        QVERIFY(diagnostics.exists(QStringLiteral("logdata.LiveData.tracev3")));
        const QRegularExpression layout(QStringLiteral(
            "\\Atype  : File Rotate\nfile  : Persist/[0-9a-f]{16}\\.tracev3\n"
            "time  : \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\+0000\ntotal : \\d+\n"
            "procs :\n(    - \\[ {0,10}\\d+, {1,3}\\d+\\.\\d, /[^\n]* \\]\n){6,20}\n\\z"));
        for (const char* name : {"logdata.statistics.0.txt", "logdata.statistics.1.txt"}) {
            QFile statistics(diagnostics.filePath(QString::fromLatin1(name)));
            QVERIFY2(statistics.open(QIODevice::ReadOnly), name);
            const QString text = QString::fromUtf8(statistics.readAll());
            const QString record =
                text.split(QStringLiteral("--- !logd statistics record\n")).value(1);
            QVERIFY2(layout.match(record).hasMatch(), qPrintable(record));
        }
    }

    void sameMomentGivesTheSameStore()
    {
        QTemporaryDir other;
        QVERIFY(DemonstrationStore(other.path().toStdString()).writeUntil(now));
        QCOMPARE(filesBelow(other.path()), filesBelow(m_folder.path()));
    }

    /// Each entry with all that a list tells of it; later ones come after.
    void pastStaysAsItIs()
    {
        const auto told = [](const QString& root) {
            QStringList lines;
            const auto store = logstore::Store::open(root.toStdString());
            auto stream = store->entries(logstore::Store::beginning);
            while (const Entry* entry = stream.next()) {
                const auto text = [](std::string_view utf8) {
                    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
                };
                lines.append(QStringLiteral("%1 %2 %3 %4 %5")
                                 .arg(entry->time())
                                 .arg(entry->activityIdentifier())
                                 .arg(text(entry->process()), text(entry->composedMessage()))
                                 .arg(int(entry->storeCategory())));
            }
            return lines;
        };
        QTemporaryDir folder;
        DemonstrationStore store(folder.path().toStdString());
        QVERIFY(store.writeUntil(now));
        const QStringList before = told(folder.path());
        for (const std::int64_t later : {5, 400, 400, 7000}) {
            QVERIFY(store.writeUntil(now + later * second));
            const QStringList after = told(folder.path());
            QCOMPARE(after.mid(0, before.size()), before);
            QVERIFY(after.size() > before.size());
        }
        QVERIFY(told(folder.path()).constLast() > QString::number(now + 6999 * second));
    }

    void replacesTheOneBefore()
    {
        QTemporaryDir folder;
        QFile own(folder.filePath(QStringLiteral("mine.txt")));
        QVERIFY(own.open(QIODevice::WriteOnly));
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("diagnostics/Persist")));
        QFile stale(
            folder.filePath(QStringLiteral("diagnostics/Persist/00000000000000ff.tracev3")));
        QVERIFY(stale.open(QIODevice::WriteOnly));
        QVERIFY(DemonstrationStore(folder.path().toStdString()).writeUntil(now + second));
        QVERIFY(!stale.exists());
        QVERIFY(own.exists());
    }

    void unwritableFolderIsNamed()
    {
        const auto result = DemonstrationStore("/dev/null/store").writeUntil(now);
        QVERIFY(!result);
        QVERIFY2(contains(result.error().description, "/dev/null/store"),
                 result.error().description.c_str());
    }

private:
    using Test = std::function<bool(const Entry&)>;

    int count(std::int64_t from, std::int64_t to, const Test& test) const
    {
        int result = 0;
        auto stream = open().entries(from);
        for (const Entry* entry = stream.next(); entry && entry->time() < to; entry = stream.next())
            result += test(*entry);
        return result;
    }

    logstore::Store open() const
    {
        auto store = logstore::Store::open(m_folder.path().toStdString());
        if (!store)
            qFatal("%s", store.error().name.c_str());
        return *store;
    }

    QTemporaryDir m_folder;
};

TESSEL_TEST(TestDemonstrationStore)
#include "tst_demonstrationstore.moc"
