// SPDX-License-Identifier: MIT
#include "app/dedysfunction.h"
#include "app/localstore.h"
#include "platform/systemlogstores.h"
#include "support/fakeplatform.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_LocalStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void macsOwnPlacesComeFirst();
    void macsStoreIsLeftAlone();
    void demonstrationPassesTheChecks();
    void newWindowsFirstSecondsHaveEntries_data();
    void newWindowsFirstSecondsHaveEntries();
    void unwritableFolderIsReported();

private:
    std::unique_ptr<FakePlatform> m_platform;
};

void tst_LocalStore::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void tst_LocalStore::init()
{
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QDir(demonstrationFolder()).removeRecursively();
    m_platform = std::make_unique<FakePlatform>();
}

void tst_LocalStore::macsOwnPlacesComeFirst()
{
    QCOMPARE(localStoreFolders(),
             QStringList({u"/var/db"_s, u"/private/var/db"_s, demonstrationFolder()}));
}

void tst_LocalStore::macsStoreIsLeftAlone()
{
    const QString mac = m_platform->folder.filePath(u"db"_s);
    QVERIFY(QDir().mkpath(mac + u"/diagnostics"_s));
    const SystemLogStores stores({mac, demonstrationFolder()});
    QVERIFY(prepareLocalStore(stores, m_platform->clock));
    QVERIFY(!QFileInfo::exists(demonstrationFolder()));
    QVERIFY(QDir(mac + u"/diagnostics"_s).isEmpty());
}

void tst_LocalStore::demonstrationPassesTheChecks()
{
    SystemLogStores stores({u"/nowhere"_s, demonstrationFolder()});
    QVERIFY(prepareLocalStore(stores, m_platform->clock));
    SystemFileManager files;
    const Platform& fake = m_platform->platform;
    const Platform platform{fake.panels, fake.alerts,    fake.defaults,
                            stores,      fake.processes, fake.clock};
    deDysfunction check(platform, files, {stores.localFolder().toStdString(), std::nullopt},
                        [] { QFAIL("quit"); });
    QVERIFY(check.check());
    QVERIFY(m_platform->alerts.shown.isEmpty());
}

void tst_LocalStore::newWindowsFirstSecondsHaveEntries_data()
{
    QTest::addColumn<QTime>("now");
    QTest::newRow("as a minute begins") << QTime(14, 5, 0, 1);
    QTest::newRow("early in a minute") << QTime(14, 5, 3);
    QTest::newRow("late in a minute") << QTime(14, 5, 58);
    QTest::newRow("as a day begins") << QTime(0, 0);
}

void tst_LocalStore::newWindowsFirstSecondsHaveEntries()
{
    QFETCH(QTime, now);
    m_platform->clock.currentTime.setTime(now);
    SystemLogStores stores({demonstrationFolder()});
    QVERIFY(prepareLocalStore(stores, m_platform->clock));
    QDateTime minute = m_platform->clock.currentTime;
    minute.setTime(QTime(now.hour(), now.minute()));

    const auto store = stores.local();
    QVERIFY(store);
    const OSLogStore::Position from = store->position(minute);
    auto entries = store->getEntries(from);
    int found = 0;
    while (const logstore::Entry* entry = entries.next()) {
        if (entry->time() < from.after(5).time)
            ++found;
    }
    QVERIFY2(found > 20, qPrintable(QString::number(found)));
}

void tst_LocalStore::unwritableFolderIsReported()
{
    const QFileInfo folder(demonstrationFolder());
    QVERIFY(QDir().mkpath(folder.path()));
    QFile inTheWay(folder.filePath());
    QVERIFY(inTheWay.open(QFile::WriteOnly));
    const auto prepared =
        prepareLocalStore(SystemLogStores({folder.filePath()}), m_platform->clock);
    inTheWay.remove();
    QVERIFY(!prepared);
    QVERIFY(prepared.error().description.find(folder.filePath().toStdString())
            != std::string::npos);
}

QTEST_GUILESS_MAIN(tst_LocalStore)
#include "tst_localstore.moc"
