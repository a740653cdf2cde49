// SPDX-License-Identifier: MIT
#include "platform/oslogstore.h"
#include "support/smallstore.h"
#include "support/testcase.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <limits>

using namespace Qt::StringLiterals;

constexpr qint64 second = 1'000'000'000;
constexpr qint64 firstTime = 1709816700 * second;
constexpr qint64 earliest = std::numeric_limits<qint64>::min();
constexpr qint64 latest = std::numeric_limits<qint64>::max();

class TestOSLogStore : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        SmallStore store(firstTime - 60 * second);
        for (int i = 0; i <= 10; ++i)
            store.log(firstTime + i * second, std::to_string(i));
        QVERIFY(store.write(path(u"small.logarchive"_s)));
    }

    void positionsByDate_data()
    {
        QTest::addColumn<QDateTime>("date");
        QTest::addColumn<qint64>("time");
        const auto milliseconds = [](qint64 time) {
            return QDateTime::fromMSecsSinceEpoch(time, QTimeZone::utc());
        };
        QTest::newRow("to the millisecond")
            << milliseconds(1709816700031) << firstTime + 31'000'000;
        QTest::newRow("before 1970") << milliseconds(-1) << qint64(-1'000'000);
        QTest::newRow("before what nanoseconds can count")
            << QDateTime({1000, 1, 1}, {}, QTimeZone::utc()) << earliest;
        QTest::newRow("after what nanoseconds can count")
            << QDateTime({3000, 1, 1}, {}, QTimeZone::utc()) << latest;
    }

    void positionsByDate()
    {
        QFETCH(QDateTime, date);
        const auto store = OSLogStore::open(path(u"small.logarchive"_s));
        QVERIFY(store);
        QTEST(qint64(store->position(date).time), "time");
    }

    void positionsBeforeTheEnd_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<qint64>("time");
        const qint64 end = firstTime + 10 * second;
        QTest::newRow("the end itself") << 0.0 << end;
        QTest::newRow("part of a second before") << -0.25 << end - second / 4;
        QTest::newRow("an hour before") << -3600.0 << end - 3600 * second;
        QTest::newRow("longer than time") << -1e300 << earliest + end;
        QTest::newRow("later than time") << 1e300 << latest;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << end;
    }

    void positionsBeforeTheEnd()
    {
        QFETCH(double, seconds);
        const auto store = OSLogStore::open(path(u"small.logarchive"_s));
        QVERIFY(store);
        QTEST(qint64(store->position(seconds).time), "time");
    }

    void readsFromAPositionOn()
    {
        const auto store = OSLogStore::open(path(u"small.logarchive"_s));
        QVERIFY(store);
        logstore::EntryStream entries = store->getEntries(store->position(-2.5));
        std::string messages;
        while (const logstore::Entry* entry = entries.next())
            messages.append(entry->composedMessage()) += ' ';
        QCOMPARE(messages, "8 9 10 ");
    }

    void missingStoreIsNamed()
    {
        const QString missing = path(u"näher.logarchive"_s);
        const auto store = OSLogStore::open(missing);
        QVERIFY(!store);
        const QString description = QString::fromStdString(store.error().description);
        QCOMPARE(description,
                 u"“näher.logarchive” could not be read: No such file or directory."_s);
    }

    void localStoreIsTheFirstThatIsThere_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("chosen");
        QTest::newRow("both") << QStringList{u"mac/diagnostics"_s, u"second/diagnostics"_s}
                              << u"mac"_s;
        QTest::newRow("a folder without a store")
            << QStringList{u"mac"_s, u"second/diagnostics"_s} << u"second"_s;
        QTest::newRow("none") << QStringList() << u"standIn"_s;
    }

    void localStoreIsTheFirstThatIsThere()
    {
        QFETCH(QStringList, present);
        for (const QString& folder : present)
            QVERIFY(QDir().mkpath(path(folder)));
        SystemLogStores stores({path(u"mac"_s), path(u"second"_s)},
                               [this]() -> Result<QString> { return path(u"standIn"_s); });
        QFETCH(QString, chosen);
        QCOMPARE(stores.localFolder().value_or(QString()), path(chosen));
        const auto local =
            stores.local({}); // a store without entries may open or not; a missing one fails
        if (present.isEmpty())
            QVERIFY(!local);
        QVERIFY(stores.archive(path(u"small.logarchive"_s), {}));
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

TESSEL_TEST(TestOSLogStore)
#include "tst_oslogstore.moc"
