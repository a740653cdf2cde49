// SPDX-License-Identifier: MIT
#include "app/dedysfunction.h"
#include "support/fakeplatform.h"
#include "support/logfolder.h"
#include "support/smallstore.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t bootTime = 1'709'800'000 * second;
constexpr std::int64_t lastTime = bootTime + 600 * second;

const QString noAdministrator = u"Tessel can't get logs unless you're an admin user.\n"
                                "Please switch to an admin account and try again."_s;
const QString noPersist = u"Tessel can't find any log files on your Mac."_s;
const QString noTimesync = u"Tessel can't find log timesync files on your Mac."_s;
const QString noEntries = u"Tessel may not be able to find any log entries on your Mac."_s;

/// Runs a shell script in the place of every program.
class ScriptRunner final : public ProcessRunner
{
public:
    explicit ScriptRunner(QString script) : m_script(std::move(script)) {}
    Result<QByteArray> output(const QString&, const QStringList&) override
    {
        return m_shell.output(u"/bin/sh"_s, {u"-c"_s, m_script});
    }
    QString userName() const override { return u"tester"_s; }

private:
    SystemProcessRunner m_shell{200ms};
    QString m_script;
};

/// So many entries within the last two seconds, and more before them.
void writeStore(const LogFolder& folder, int lastEntries)
{
    SmallStore store(bootTime);
    for (int i = 0; i < 20; ++i)
        store.log(lastTime - 3 * second + i, "earlier");
    for (int i = 1; i <= lastEntries; ++i)
        store.log(lastTime - second + i * second / lastEntries, "late");
    QVERIFY(store.write(folder.shownPath(u"store"_s)));
}

} // namespace

class TestDeDysfunction : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_platform = std::make_unique<FakePlatform>();
        m_folder = std::make_unique<LogFolder>();
        m_files = FakeFileManager();
        m_group = u"80"_s;
        m_quits = 0;
    }

    void groupsDecide_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<bool>("passes");
        const auto row = [](const char* name, const QByteArray& output, bool passes) {
            QTest::addRow("%s", name) << output << passes;
        };
        row("first", "80 20 12 61\n", true);
        row("between", "20 12 80 61\n", true);
        row("last", "20 12 61 80\n", true);
        row("last without a line end", "20 12 61 80", true);
        row("last before a long line end", "20 80\r\n", true);
        row("alone", "80\n", true);
        row("absent", "20 12 61\n", false);
        row("only part of a number", "180 800 8 0\n", false);
        row("after a tab", "20\t80\n", false);
        row("on the second line", "20\n80\n", false);
        row("no output", "", false);
        row("not UTF-8", "20 80 \xff\n", false);
        row("cut off within a character", "20 80 \xc3", false);
        row("after many groups", QByteArray("20 ").repeated(200'000) + "80\n", true);
    }

    void groupsDecide()
    {
        QFETCH(QByteArray, output);
        m_platform->processes.answer = output;
        QTEST(checker().isAdministrator(), "passes");
    }

    void asksForTheUsersGroups()
    {
        m_platform->processes.user = u"berta"_s;
        checker().isAdministrator();
        QCOMPARE(m_platform->processes.runs,
                 QList<QStringList>({{u"/usr/bin/id"_s, u"-G"_s, u"berta"_s}}));
    }

    void commandsThatMisbehave_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<bool>("passes");
        QTest::newRow("fails, having said the groups") << u"echo 20 80; exit 1"_s << true;
        QTest::newRow("complains, and says the groups") << u"echo oops >&2; echo 80"_s << true;
        QTest::newRow("dies") << u"kill -9 $$"_s << false;
        QTest::newRow("hangs") << u"echo 80; sleep 60"_s << false;
        QTest::newRow("prints without end") << u"while echo 80 80 80 80; do :; done"_s << false;
    }

    void commandsThatMisbehave()
    {
        QFETCH(QString, script);
        ScriptRunner runner(script);
        const Platform& fake = m_platform->platform;
        const Platform platform{fake.panels,    fake.alerts, fake.defaults,
                                fake.logStores, runner,      fake.clock};
        deDysfunction check(platform, m_files, {m_folder->path(), m_group}, [] {});
        QTEST(check.isAdministrator(), "passes");
    }

    void noGroupIsAskedForWhereNoneGuards()
    {
        m_group.reset();
        m_platform->processes.answer.reset();
        QVERIFY(checker().isAdministrator());
        QVERIFY(m_platform->processes.runs.isEmpty());
    }

    void foldersNeedAnItem_data()
    {
        QTest::addColumn<QString>("item"); // made in the "diagnostics" folder
        QTest::addColumn<bool>("listable");
        QTest::addColumn<bool>("passes");
        QTest::newRow("missing") << u"Other/0001.tracev3"_s << true << false;
        QTest::newRow("empty") << u"%1"_s << true << false;
        QTest::newRow("a file") << u"%1/0001.tracev3"_s << true << true;
        QTest::newRow("a hidden file") << u"%1/.hidden"_s << true << true;
        QTest::newRow("a folder") << u"%1/folder/"_s << true << true;
        QTest::newRow("unreadable") << u"%1/0001.tracev3"_s << false << false;
    }

    void foldersNeedAnItem()
    {
        QFETCH(QString, item);
        QFETCH(bool, listable);
        QFETCH(bool, passes);
        const auto make = [&](const QString& name) {
            const FilePath path =
                "diagnostics" / FilePath(QString(item).replace(u"%1"_s, name).toStdString());
            if (item == u"%1")
                std::filesystem::create_directories(m_folder->path(path));
            else
                m_folder->make(path);
        };
        m_files.fails = [listable](const FilePath&) { return !listable; };

        make(u"Persist"_s);
        QCOMPARE(checker().hasPersistFiles(), passes);
        QVERIFY(!checker().hasTimesyncFiles());
        make(u"timesync"_s);
        QCOMPARE(checker().hasTimesyncFiles(), passes);
    }

    void storeNeedsElevenEntries_data()
    {
        QTest::addColumn<int>("entries");
        QTest::addColumn<bool>("passes");
        QTest::newRow("ten") << 10 << false;
        QTest::newRow("eleven") << 11 << true;
        QTest::newRow("many") << 400 << true;
    }

    void storeNeedsElevenEntries()
    {
        QFETCH(int, entries);
        writeStore(*m_folder, entries);
        m_platform->logStores.localPath = m_folder->shownPath(u"store"_s);
        QTEST(checker().storeHasEntries(), "passes");
    }

    void storeThatCannotBeOpened()
    {
        QVERIFY(!checker().storeHasEntries());
        m_platform->logStores.localPath = m_folder->shownPath(u"nowhere"_s);
        QVERIFY(!checker().storeHasEntries());
    }

    void failuresAreShownInOrder_data()
    {
        QTest::addColumn<bool>("administrator");
        QTest::addColumn<bool>("persist");
        QTest::addColumn<bool>("timesync");
        QTest::addColumn<bool>("entries");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<int>("quits");
        const QStringList all{noAdministrator, noPersist, noTimesync, noEntries};
        QTest::newRow("nothing") << true << true << true << true << QStringList() << 0;
        QTest::newRow("administrator") << false << true << true << true << all.mid(0, 1) << 1;
        QTest::newRow("Persist") << true << false << true << true << all.mid(1, 1) << 1;
        QTest::newRow("timesync") << true << true << false << true << all.mid(2, 1) << 1;
        QTest::newRow("entries") << true << true << true << false << all.mid(3, 1) << 0;
        QTest::newRow("everything") << false << false << false << false << all << 3;
    }

    void failuresAreShownInOrder()
    {
        QFETCH(bool, administrator);
        QFETCH(bool, persist);
        QFETCH(bool, timesync);
        QFETCH(bool, entries);
        m_platform->processes.answer = administrator ? "20 80\n" : "20\n";
        if (persist)
            m_folder->make("diagnostics/Persist/0001.tracev3");
        if (timesync)
            m_folder->make("diagnostics/timesync/0001.timesync");
        writeStore(*m_folder, 11);
        if (entries)
            m_platform->logStores.localPath = m_folder->shownPath(u"store"_s);

        QVERIFY(checker().check());

        QStringList messages;
        for (const FakeAlerts::Shown& alert : m_platform->alerts.shown) {
            QCOMPARE(alert.message, u"An error occurred:"_s);
            messages.append(alert.informativeText);
        }
        QTEST(messages, "messages");
        QTEST(m_quits, "quits");
    }

private:
    deDysfunction checker()
    {
        return {m_platform->platform, m_files, {m_folder->path(), m_group}, [this] { ++m_quits; }};
    }

    std::unique_ptr<FakePlatform> m_platform;
    std::unique_ptr<LogFolder> m_folder;
    FakeFileManager m_files;
    std::optional<QString> m_group;
    int m_quits = 0;
};

TESSEL_TEST(TestDeDysfunction)
#include "tst_dedysfunction.moc"
