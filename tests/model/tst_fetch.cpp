// SPDX-License-Identifier: MIT
#include "fetchfixture.h"
#include "platform/logstore/entryfilter.h"
#include "support/testcase.h"

#include <QDir>
#include <QSignalSpy>

#include <cerrno>
#include <cmath>
#include <limits>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {

constexpr double endless = std::numeric_limits<double>::quiet_NaN();

/// Lets through the messages that contain a text.
class Containing : public logstore::EntryFilter
{
public:
    explicit Containing(std::string text) : m_text(std::move(text)) {}
    bool matches(const logstore::Entry& entry) const override
    {
        return entry.composedMessage().find(m_text) != std::string_view::npos;
    }

private:
    std::string m_text;
};

/// As a predicate whose regular expression takes too long.
class GivesUp : public logstore::EntryFilter
{
public:
    bool matches(const logstore::Entry&) const override { return true; }
    bool gaveUp() const override { return true; }
};

/// Rules out every process from the catalog, so that no entry is ever looked at.
class RulesOutAll : public logstore::EntryFilter
{
public:
    bool matches(const logstore::Entry&) const override { return false; }
    using EntryFilter::mayMatch;
    bool mayMatch(const logstore::ProcessFacts&) const override { return false; }
};

} // namespace

/// How far a fetch reads, and what it tells of itself.
class TestFetch : public FetchFixture
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtTheSecond_data()
    {
        QTest::addColumn<QString>("seconds");
        QTest::addColumn<QString>("first");
        QTest::newRow("as typed") << u"09"_s << u"9"_s;
        QTest::newRow("nothing") << QString() << u"0"_s;
        QTest::newRow("no number") << u"9.5"_s << u"0"_s;
        QTest::newRow("too many") << u"75"_s << u"59"_s;
        QTest::newRow("too few") << u"-3"_s << u"0"_s;
    }

    void startsAtTheSecond()
    {
        writeSeconds(70);
        QFETCH(QString, seconds);
        QVERIFY(fetch(seconds, u"1"_s, 5));
        QTEST(messages().value(0), "first");
        QCOMPARE(m_logger->theDateSecs(), seconds);
    }

    void endsWithTheFirstEntryAfterThePeriod_data()
    {
        QTest::addColumn<double>("period");
        QTest::addColumn<QString>("last");
        QTest::newRow("whole seconds") << 3.0 << u"4"_s;
        QTest::newRow("negative is the same") << -3.0 << u"4"_s;
        QTest::newRow("just short of an entry") << 2.9999 << u"3"_s;
        QTest::newRow("none") << 0.0 << u"1"_s;
        QTest::newRow("negative none") << -0.0 << u"1"_s;
        QTest::newRow("not a number: no end") << endless << u"19"_s;
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << u"19"_s;
        QTest::newRow("longer than time") << 1e300 << u"19"_s;
        QTest::newRow("longer than the store") << 100.0 << u"19"_s;
    }

    void endsWithTheFirstEntryAfterThePeriod()
    {
        writeSeconds(20);
        QFETCH(double, period);
        QVERIFY(fetch(u"0"_s, QString(), period));
        QTEST(messages().last(), "last");
        QCOMPARE(messages().size(), messages().last().toInt() + 1);
    }

    void keepsAtMostTheMaximum_data()
    {
        QTest::addColumn<QString>("maximum");
        QTest::addColumn<int>("size");
        QTest::newRow("3") << u"3"_s << 3;
        QTest::newRow("with a sign") << u"+20"_s << 20;
        QTest::newRow("nothing") << QString() << 1000;
        QTest::newRow("letters") << u"abc"_s << 1000;
        QTest::newRow("a fraction") << u"12.5"_s << 1000;
        QTest::newRow("a blank before") << u" 20"_s << 1000;
        QTest::newRow("beyond 64 bits") << u"9223372036854775808"_s << 1000;
        QTest::newRow("more than there are") << u"9223372036854775807"_s << 1010;
        QTest::newRow("negative") << u"-5"_s << 1;
    }

    void keepsAtMostTheMaximum()
    {
        writeSeconds(1010);
        QFETCH(QString, maximum);
        QVERIFY(fetch(u"0"_s, maximum, endless));
        QTEST(int(m_logger->logList().size()), "size");
        QCOMPARE(messages().first(), u"0"_s);
        QCOMPARE(messages().last(), QString::number(m_logger->logList().size() - 1));
    }

    void maximumOfNothingReadsOneEntry_data()
    {
        QTest::addColumn<bool>("signposts");
        QTest::addColumn<QStringList>("kept");
        QTest::newRow("a signpost, kept") << true << QStringList{u"layout"_s};
        QTest::newRow("a signpost, dropped") << false << QStringList();
    }

    void maximumOfNothingReadsOneEntry()
    {
        SmallStore store(startTime - second);
        store.signpost(startTime, "layout");
        store.log(startTime + second, "message");
        write(store);
        QFETCH(bool, signposts);
        QVERIFY(fetch(u"0"_s, u"0"_s, 60, signposts));
        QTEST(messages(), "kept");
    }

    void droppedSignpostsDoNotCount()
    {
        SmallStore store(startTime - second);
        for (int i = 0; i < 5; ++i)
            store.signpost(startTime + i, "layout");
        store.log(startTime + second, "first");
        store.signpost(startTime + 9 * second, "after the period");
        store.log(startTime + 10 * second, "after the period");
        store.log(startTime + 11 * second, "never");
        write(store);
        QVERIFY(fetch(u"0"_s, u"2"_s, 5, false));
        QCOMPARE(messages(), (QStringList{u"first"_s, u"after the period"_s}));
        QVERIFY(fetch(u"0"_s, u"2"_s, 5, true));
        QCOMPARE(messages(), (QStringList{u"layout"_s, u"layout"_s}));
    }

    void filterChoosesEntries()
    {
        writeSeconds(35);
        const auto threes = std::make_shared<Containing>("3");
        QVERIFY(m_logger->getLog(atMinute(), u"0"_s, u"4"_s, threes, true, endless));
        QCOMPARE(messages(), (QStringList{u"3"_s, u"13"_s, u"23"_s, u"30"_s}));
        QVERIFY(m_logger->getLog(atMinute(), u"0"_s, u"4"_s, std::make_shared<Containing>("x"),
                                 true, endless));
        QVERIFY(messages().isEmpty());
    }

    void setsTheTitles_data()
    {
        QTest::addColumn<QString>("seconds");
        QTest::addColumn<QString>("title");
        QTest::newRow("as typed") << u"9"_s << u"Tessel 2024_03_07_14-05-9"_s;
        QTest::newRow("not clamped") << u"75"_s << u"Tessel 2024_03_07_14-05-75"_s;
        QTest::newRow("nothing") << QString() << u"Tessel 2024_03_07_14-05-"_s;
    }

    void setsTheTitles()
    {
        writeSeconds(1);
        QFETCH(QString, seconds);
        QVERIFY(fetch(seconds, QString(), 5));
        QTEST(m_logger->logDateStr(), "title");
        QCOMPARE(m_logger->theDate(), atMinute());
    }

    void suffixIsThatOfTheFetch()
    {
        writeSeconds(1);
        m_fake->clock.currentTime = QDateTime(QDate(2024, 7, 1), QTime(12, 0), QTimeZone::utc());
        QVERIFY(fetch(u"0"_s, QString(), 5));
        QCOMPARE(m_logger->tzStr(), u"+0200"_s);
        QCOMPARE(m_logger->logList().first().date.toString(), u"2024-03-07 14:05:00.000000+0200"_s);
    }

    void startInTheRepeatedHour()
    {
        // 02:30 comes twice in the night when summer time ends.
        const qint64 secondTime = 1729992600 * second; // 2024-10-27 01:30 UTC
        SmallStore store(secondTime - 7200 * second);
        store.log(secondTime - 3600 * second, "summer");
        store.log(secondTime, "winter");
        write(store);
        for (const auto& [hour, expected] :
             {std::pair(0, u"summer"_s), std::pair(1, u"winter"_s)}) {
            const QDateTime start(QDate(2024, 10, 27), QTime(hour, 30, 20), QTimeZone::utc());
            QVERIFY(m_logger->getLog(start, u"0"_s, u"1"_s, nullptr, true, 5));
            QCOMPARE(messages(), QStringList(expected));
        }
    }

    void failedFetchKeepsTheSuffix_data()
    {
        QTest::addColumn<bool>("fromArchive");
        QTest::newRow("local store") << false;
        QTest::newRow("archive") << true;
    }

    void failedFetchKeepsTheSuffix()
    {
        writeSeconds(3);
        QVERIFY(fetch(u"0"_s, QString(), 5));
        QFETCH(bool, fromArchive);
        m_fake->logStores.localPath.reset();
        if (fromArchive) {
            m_logger->chooseArchive();
            m_fake->panels.confirm(m_fake->folder.filePath(u"missing.logarchive"_s));
        }
        m_fake->clock.zone = QTimeZone("America/New_York");
        QVERIFY(!fetch(u"30"_s, QString(), 5));
        QVERIFY(m_logger->logList().isEmpty());
        QCOMPARE(m_logger->tzStr(), u"+0100"_s);
        QCOMPARE(m_logger->logDateStr(), u"Tessel 2024_03_07_08-05-30"_s);
        QVERIFY(m_fake->alerts.shown.isEmpty());
    }

    void readsTheChosenArchive()
    {
        writeSeconds(1);
        SmallStore store(startTime - second);
        store.log(startTime, "from the archive");
        const QString path = m_fake->folder.filePath(u"other.logarchive"_s);
        QVERIFY(store.write(path));
        m_logger->chooseArchive();
        m_fake->panels.confirm(path);
        QVERIFY(fetch(u"0"_s, QString(), 5));
        QCOMPARE(messages(), QStringList(u"from the archive"_s));
        m_logger->chooseArchive();
        m_fake->panels.cancel();
        QVERIFY(fetch(u"0"_s, QString(), 5));
        QCOMPARE(messages(), QStringList(u"0"_s));
        QCOMPARE(m_fake->logStores.opened, (QStringList{path, path, QString()}));
    }

    void tellsWhatCouldNotBeRead()
    {
        const QSignalSpy told(m_logger.get(), &Logger::sourceReportChanged);
        const auto text = [this] { return m_logger->sourceReport().text(); };
        const QString missing = m_fake->folder.filePath(u"missing.logarchive"_s);
        const QString notThere = u"“missing.logarchive” could not be read: %1."_s.arg(
            QString::fromStdString(std::generic_category().message(ENOENT)));
        m_logger->useArchive(QUrl::fromLocalFile(missing));
        QCOMPARE(text(), notThere);
        QVERIFY(!fetch(u"0"_s, QString(), 5));
        QCOMPARE(text(), notThere);

        SmallStore store(startTime - second);
        store.log(startTime, "text");
        const QString path = m_fake->folder.filePath(u"damaged.logarchive"_s);
        QVERIFY(store.write(path));
        QVERIFY(QDir(path).mkpath(u"Special/0000000000000002.tracev3"_s));
        m_logger->useArchive(QUrl::fromLocalFile(path));
        const QString oneOfThree = u"1 of 3 file(s) could not be read."_s;
        QCOMPARE(text(), oneOfThree);
        QVERIFY(
            m_logger->getLog(atMinute(), u"0"_s, QString(), std::make_shared<GivesUp>(), false, 5));
        QCOMPARE(text(), oneOfThree + u" A regular expression took too long for some entries."_s);
        const QList<SourceReport::Item> items = m_logger->sourceReport().items();
        QCOMPARE(items.size(), 1);
        QCOMPARE(items[0].name, u"Special/0000000000000002.tracev3"_s);
        QCOMPARE(items[0].reason, u"it is not a file"_s);
        QVERIFY(told.size() > 3);

        m_logger->chooseArchive();
        m_fake->panels.cancel();
        QCOMPARE(text(), QString());
        QVERIFY(m_fake->alerts.shown.isEmpty());
    }

    void openingCanBeCancelled()
    {
        writeSeconds(3);
        int calls = 0;
        m_logger->setFetchObserver([&calls](const FetchProgress& progress) {
            ++calls;
            return !progress.isOpening;
        });
        QVERIFY(!fetch(u"0"_s, QString(), 5));
        QCOMPARE(calls, 1);
        QVERIFY(m_logger->logList().isEmpty());
        QCOMPARE(m_logger->sourceReport().text(), QString());
        QVERIFY(!m_logger->isFetching());
    }

    void signalsOncePerChange()
    {
        writeSeconds(100);
        const QSignalSpy list(m_logger.get(), &Logger::logListChanged);
        const QSignalSpy date(m_logger.get(), &Logger::theDateChanged);
        const QSignalSpy seconds(m_logger.get(), &Logger::theDateSecsChanged);
        const QSignalSpy title(m_logger.get(), &Logger::logDateStrChanged);
        const QSignalSpy suffix(m_logger.get(), &Logger::tzStrChanged);
        const auto counts = [&] {
            return QList<qsizetype>{list.size(), date.size(), seconds.size(), title.size(),
                                    suffix.size()};
        };
        QVERIFY(fetch(u"5"_s, QString(), 50));
        QCOMPARE(counts(), (QList<qsizetype>{2, 1, 1, 1, 1}));
        QVERIFY(fetch(u"5"_s, QString(), 50));
        QCOMPARE(counts(), (QList<qsizetype>{4, 1, 1, 1, 1}));
        QVERIFY(fetch(u"6"_s, QString(), 50));
        QCOMPARE(counts(), (QList<qsizetype>{6, 1, 2, 2, 1}));
    }

    void observerSeesTheFetchGrow()
    {
        constexpr int count = 1000;
        writeSeconds(count);
        QList<FetchProgress> calls;
        QList<qsizetype> announced;
        connect(m_logger.get(), &Logger::logListChanged, this,
                [&] { announced.append(m_logger->logList().size()); });
        m_logger->setFetchObserver([&](const FetchProgress& progress) {
            if (!progress.isOpening)
                calls.append(progress);
            return true;
        });
        QVERIFY(fetch(u"0"_s, QString::number(count), endless));
        QVERIFY(!calls.isEmpty());
        QCOMPARE(announced.size(), calls.size() + 2);
        for (qsizetype i = 0; i < calls.size(); ++i) {
            const FetchProgress& progress = calls.at(i);
            QCOMPARE(progress.fetched, announced.at(i + 1));
            QCOMPARE(progress.entriesRead, quint64(progress.fetched));
            QCOMPARE(progress.fraction, double(progress.fetched) / count);
            QCOMPARE(progress.reached.toSecsSinceEpoch(),
                     startTime / second + progress.fetched - 1);
        }
        QCOMPARE(m_logger->logList().size(), count);
    }

    void observerCancels_data()
    {
        QTest::addColumn<std::shared_ptr<const logstore::EntryFilter>>("filter");
        QTest::addColumn<bool>("signposts");
        QTest::addColumn<bool>("keepsSome");
        using Filter = std::shared_ptr<const logstore::EntryFilter>;
        QTest::newRow("everything matches") << Filter() << true << true;
        QTest::newRow("nothing matches")
            << Filter(std::make_shared<Containing>("nowhere")) << true << false;
        QTest::newRow("every process is ruled out")
            << Filter(std::make_shared<RulesOutAll>()) << true << false;
        QTest::newRow("everything is dropped") << Filter() << false << false;
    }

    void observerCancels()
    {
        QFETCH(std::shared_ptr<const logstore::EntryFilter>, filter);
        QFETCH(bool, signposts);
        QFETCH(bool, keepsSome);
        constexpr int count = 1000;
        SmallStore store(startTime - second);
        for (int i = 0; i < count; ++i)
            store.signpost(startTime + i * second, "layout");
        write(store);
        int calls = 0;
        m_logger->setFetchObserver([&](const FetchProgress& progress) {
            calls += progress.isOpening ? 0 : 1;
            return progress.isOpening;
        });
        QVERIFY(!m_logger->getLog(atMinute(), u"0"_s, QString::number(count), filter, signposts,
                                  endless));
        QCOMPARE(calls, 1);
        QCOMPARE(m_logger->logList().size() > 0, keepsSome);
        QVERIFY(m_logger->logList().size() < count);
    }

    void fetchWithinAFetchIsRefused()
    {
        writeSeconds(1000);
        bool isRefused = false;
        m_logger->setFetchObserver([&](const FetchProgress&) {
            isRefused = !fetch(u"7"_s, u"1"_s, 5);
            return false;
        });
        QVERIFY(!fetch(u"0"_s, u"1000"_s, endless));
        QVERIFY(isRefused);
        QCOMPARE(m_logger->theDateSecs(), u"0"_s);
        m_logger->setFetchObserver({});
        QVERIFY(fetch(u"7"_s, u"1"_s, 5));
        QCOMPARE(messages(), QStringList(u"7"_s));
    }

private:
    QStringList messages() const
    {
        QStringList texts;
        for (const LogEntry& entry : m_logger->logList())
            texts.append(entry.type == SignpostEntry ? entry.signpostName.toString()
                                                     : entry.composedMessage.toString());
        return texts;
    }
};

TESSEL_TEST(TestFetch)
#include "tst_fetch.moc"
