// SPDX-License-Identifier: MIT
#include "app/dedysfunction.h"
#include "app/demonstrationstores.h"
#include "app/predicatebuilding.h"
#include "platform/oslogstore.h"
#include "settings/predicatelibrary.h"
#include "support/fakeplatform.h"
#include "support/testcase.h"

#include <QDir>
#include <QTest>

#include <deque>

using namespace Qt::StringLiterals;

class TestDemonstrationStores : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_platform = std::make_unique<FakePlatform>();
    }

    void passTheStartUpChecks()
    {
        DemonstrationStores demonstration(make());
        SystemLogStores stores({u"/nowhere"_s}, [&] { return demonstration.folder(); });
        SystemFileManager files;
        const Platform& fake = m_platform->platform;
        const Platform platform{fake.panels, fake.alerts,    fake.defaults,
                                stores,      fake.processes, fake.clock};
        deDysfunction check(platform, files,
                            {stores.localFolder().value_or(QString()).toStdString(), std::nullopt},
                            [] { QFAIL("quit"); });
        QVERIFY(check.check());
        QVERIFY(m_platform->alerts.shown.isEmpty());
    }

    void everyDefaultPredicateFindsSomething_data()
    {
        QTest::addColumn<QString>("predicate");
        const QStringList texts = defaultPredicateTexts();
        for (qsizetype i = 0; i < texts.size(); ++i) {
            if (!texts.at(i).isEmpty())
                QTest::newRow(qPrintable(defaultPredicateNames().value(i))) << texts.at(i);
        }
    }

    /// In any five minutes of the hour, and in any five seconds of the last minutes.
    void everyDefaultPredicateFindsSomething()
    {
        constexpr std::int64_t second = 1'000'000'000;
        QFETCH(QString, predicate);
        const auto filter = predicateBuilder(m_platform->clock)({predicate, {}});
        QVERIFY(filter);
        DemonstrationStores demonstration(make());
        const auto store = OSLogStore::open(demonstration.folder().value_or(QString()));
        QVERIFY(store);
        const std::int64_t end = store->position(0).time;
        std::deque<std::int64_t> ages; // of the entries found, the newest first
        auto entries = store->getEntries({logstore::Store::beginning}, *filter);
        while (const logstore::Entry* entry = entries.next())
            ages.push_front(end - entry->time());
        const auto longestPause = [&ages](std::int64_t within) {
            std::int64_t longest = 0;
            std::int64_t since = 0;
            for (const std::int64_t age : ages) {
                longest = std::max(longest, std::min(age, within) - since);
                since = std::min(age, within);
            }
            return std::max(longest, within - since);
        };
        QVERIFY(longestPause(3600 * second) <= 300 * second);
        QVERIFY(longestPause(290 * second) <= 5 * second);
    }

    void newWindowsFirstSecondsHaveEntries_data()
    {
        QTest::addColumn<QTime>("now");
        QTest::newRow("as a minute begins") << QTime(14, 5, 0, 1);
        QTest::newRow("early in a minute") << QTime(14, 5, 3);
        QTest::newRow("late in a minute") << QTime(14, 5, 58);
        QTest::newRow("as a day begins") << QTime(0, 0);
    }

    void newWindowsFirstSecondsHaveEntries()
    {
        QFETCH(QTime, now);
        QDateTime& time = m_platform->clock.currentTime;
        time.setTime(now);
        DemonstrationStores demonstration(make());
        for (const int secondsLater : {0, 70}) {
            wait(secondsLater);
            demonstration.expectPresentMinute();
            QDateTime minute = time;
            minute.setTime(QTime(time.time().hour(), time.time().minute()));
            const int found = entriesAt(demonstration.folder().value_or(QString()), minute);
            QVERIFY2(found > 20, qPrintable(QString::number(found)));
        }
    }

    void followTheClock_data()
    {
        QTest::addColumn<int>("secondsLater");
        QTest::addColumn<bool>("isAnother");
        QTest::newRow("at once") << 0 << false;
        QTest::newRow("some minutes later") << 250 << false;
        QTest::newRow("an hour later") << 3600 << false;
        QTest::newRow("after the clock was set back") << -7200 << true;
    }

    void followTheClock()
    {
        QFETCH(int, secondsLater);
        DemonstrationStores demonstration(make());
        const QString first = demonstration.folder().value_or(QString());
        wait(secondsLater);
        const QString second = demonstration.folder().value_or(QString());
        QTEST(second != first, "isAnother");
        QVERIFY(second == first || entriesAt(second, m_platform->clock.now().addSecs(-3)) > 20);
    }

    void openReaderGoesOn()
    {
        const auto countFrom = [](logstore::EntryStream& entries, int count) {
            while (entries.next())
                ++count;
            return count;
        };
        DemonstrationStores demonstration(make());
        const auto store = OSLogStore::open(demonstration.folder().value_or(QString()));
        QVERIFY(store);
        auto all = store->getEntries({logstore::Store::beginning});
        const int expected = countFrom(all, 0);

        auto entries = store->getEntries({logstore::Store::beginning});
        QVERIFY(entries.next());
        wait(3600);
        QVERIFY(demonstration.folder());
        QCOMPARE(countFrom(entries, 1), expected);
        for (int times = 0; times < 3; ++times) {
            wait(3600);
            QVERIFY(demonstration.folder());
        }
        QCOMPARE(folders().size(), 1);
    }

    void processesDoNotMeet()
    {
        DemonstrationStores first(make());
        const QString folder = first.folder().value_or(QString());
        {
            DemonstrationStores second(make());
            QVERIFY(second.folder().value_or(folder) != folder);
            QCOMPARE(folders().size(), 2);
        }
        QCOMPARE(folders(), QStringList{QDir(folder).dirName()});
        QVERIFY(entriesAt(folder, m_platform->clock.now().addSecs(-3)) > 20);
    }

    void leftoversAreRemoved()
    {
        QVERIFY(QDir().mkpath(parent() + u"/old/diagnostics"_s));
        QFile lock(parent() + u"/old.lock"_s);
        QVERIFY(lock.open(QFile::WriteOnly));
        // As a process leaves it that was killed.
        lock.write("2147480000\nTessel\n" + QSysInfo::machineHostName().toUtf8() + '\n');
        lock.close();
        {
            DemonstrationStores demonstration(make());
            QVERIFY(demonstration.folder());
            QVERIFY(!folders().contains(u"old"_s));
        }
        QVERIFY(QDir(parent()).isEmpty());
    }

    void macsStoreIsLeftAlone()
    {
        const QString mac = m_platform->folder.filePath(u"db"_s);
        QVERIFY(QDir().mkpath(mac + u"/diagnostics"_s));
        DemonstrationStores demonstration(make());
        const SystemLogStores stores({mac}, [&] { return demonstration.folder(); });
        demonstration.expectPresentMinute();
        QCOMPARE(stores.localFolder().value_or(QString()), mac);
        QVERIFY(!QFileInfo::exists(parent()));
        QVERIFY(QDir(mac + u"/diagnostics"_s).isEmpty());
    }

    void unwritableFolderIsPassedOver()
    {
        QVERIFY(QFile(parent()).open(QFile::WriteOnly)); // a file in its way
        const QString second = m_platform->folder.filePath(u"session/Demonstration"_s);
        QString found;
        {
            DemonstrationStores demonstration({parent(), second}, m_platform->clock);
            QVERIFY(demonstration.folder().value_or(QString()).startsWith(second));
            DemonstrationStores temporary({parent()}, m_platform->clock);
            found = temporary.folder().value_or(QString());
            QVERIFY(found.startsWith(QDir::tempPath()));
            QVERIFY(entriesAt(found, m_platform->clock.now().addSecs(-3)) > 20);
        }
        QVERIFY(!QFileInfo::exists(QFileInfo(found).path()));

        const QByteArray temporaryFolder = qgetenv("TMPDIR");
        qputenv("TMPDIR", "/dev/null");
        DemonstrationStores none({parent()}, m_platform->clock);
        const auto folder = none.folder();
        qputenv("TMPDIR", temporaryFolder);
        QVERIFY(!folder);
        const QString reason = QString::fromStdString(folder.error().description);
        QVERIFY2(reason.contains(parent()) && reason.contains("Not a directory"_L1),
                 qPrintable(reason));
    }

private:
    QString parent() const { return m_platform->folder.filePath(u"Demonstration"_s); }
    QStringList folders() const
    {
        return QDir(parent()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }
    DemonstrationStores make() const { return {{parent()}, m_platform->clock}; }
    void wait(qint64 seconds)
    {
        m_platform->clock.currentTime = m_platform->clock.currentTime.addSecs(seconds);
    }
    /// How many entries the five seconds from `time` on have.

    static int entriesAt(const QString& folder, const QDateTime& time)
    {
        const auto store = OSLogStore::open(folder);
        if (!store)
            return 0;
        const OSLogStore::Position from = store->position(time);
        auto entries = store->getEntries(from);
        int found = 0;
        for (const logstore::Entry* entry = entries.next(); entry; entry = entries.next())
            found += entry->time() < from.after(5).time;
        return found;
    }

    std::unique_ptr<FakePlatform> m_platform;
};

TESSEL_TEST(TestDemonstrationStores)
#include "tst_demonstrationstores.moc"
