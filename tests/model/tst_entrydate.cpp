// SPDX-License-Identifier: MIT
#include "model/entrydate.h"
#include "support/testcase.h"

#include <QTest>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

constexpr qint64 second = 1'000'000'000;

QString written(const QTimeZone& zone, std::int64_t time)
{
    return EntryDateWriter(zone, QString())(time).toString();
}

class TestEntryDate : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void writes_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<qint64>("time");
        QTest::addColumn<QString>("text");
        const qint64 example = 1709816709 * second; // 2024-03-07 13:05:09 UTC
        QTest::newRow("microseconds")
            << "Europe/Berlin"_ba << example + 31'250'000 << u"2024-03-07 14:05:09.031250"_s;
        QTest::newRow("just short of the next second")
            << "UTC"_ba << example + 999'999'999 << u"2024-03-07 13:05:09.999999"_s;
        QTest::newRow("half a microsecond is cut")
            << "UTC"_ba << example + 500 << u"2024-03-07 13:05:09.000000"_s;
        QTest::newRow("1970") << "UTC"_ba << qint64(0) << u"1970-01-01 00:00:00.000000"_s;
        QTest::newRow("a nanosecond before 1970")
            << "UTC"_ba << qint64(-1) << u"1969-12-31 23:59:59.999999"_s;
        QTest::newRow("leap day") << "UTC"_ba << 951'782'400 * second
                                  << u"2000-02-29 00:00:00.000000"_s;
        QTest::newRow("no leap day in 1900")
            << "UTC"_ba << -2'203'891'201 * second << u"1900-02-28 23:59:59.000000"_s;
        QTest::newRow("the day after it")
            << "UTC"_ba << -2'203'891'200 * second << u"1900-03-01 00:00:00.000000"_s;
        QTest::newRow("half-hour zone, over midnight")
            << "Asia/Kolkata"_ba << example + 18000 * second << u"2024-03-07 23:35:09.000000"_s;
    }

    void writes()
    {
        QFETCH(QByteArray, zone);
        QFETCH(qint64, time);
        QTEST(written(QTimeZone(zone), time), "text");
    }

    void followsTheZoneAcrossItsChanges()
    {
        // One writer, so that what it remembers of the zone is put to the test. The suffix stays.
        EntryDateWriter date(QTimeZone("Europe/Berlin"), u"+0200"_s);
        const qint64 springForward = 1711846800 * second; // 2024-03-31 01:00 UTC
        const qint64 fallBack = 1729990800 * second;      // 2024-10-27 01:00 UTC
        QCOMPARE(date(springForward - 1).toString(), u"2024-03-31 01:59:59.999999+0200"_s);
        QCOMPARE(date(springForward).toString(), u"2024-03-31 03:00:00.000000+0200"_s);
        QCOMPARE(date(fallBack - 1).toString(), u"2024-10-27 02:59:59.999999+0200"_s);
        QCOMPARE(date(fallBack).toString(), u"2024-10-27 02:00:00.000000+0200"_s);
        QCOMPARE(date(springForward - 1).toString(), u"2024-03-31 01:59:59.999999+0200"_s);
    }

    void agreesWithTheZone_data()
    {
        QTest::addColumn<QTimeZone>("zone");
        for (const char* id :
             {"UTC", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "Asia/Kathmandu",
              "Africa/Casablanca", "Pacific/Apia", "America/Sao_Paulo"})
            QTest::newRow(id) << QTimeZone(id);
        QTest::newRow("fixed offset") << QTimeZone(-12'600);
    }

    void agreesWithTheZone()
    {
        QFETCH(QTimeZone, zone);
        EntryDateWriter date(zone, QString());
        std::mt19937_64 random(11); // NOLINT(cert-msc51-cpp): the same moments in every run
        std::uniform_int_distribution<qint64> anyMoment(-3'000'000'000,
                                                        6'000'000'000); // 1874 to 2160
        std::vector<qint64> moments(20'000);
        std::generate(moments.begin(), moments.end(), [&] { return anyMoment(random); });
        std::sort(moments.begin(), moments.end());
        std::reverse(moments.begin() + 10'000, moments.end()); // and later ones before earlier ones
        for (const qint64 moment : moments) {
            const QDateTime expected = QDateTime::fromSecsSinceEpoch(moment, zone);
            QCOMPARE(date(moment * second).toString(),
                     expected.toString(u"yyyy-MM-dd HH:mm:ss.000000"_s));
        }
    }

    void survivesTheEndsOfTime()
    {
        const QTimeZone zone("Europe/Berlin");
        QVERIFY(
            written(zone, std::numeric_limits<std::int64_t>::min()).startsWith(u"1677-09-21 "_s));
        QVERIFY(written(zone, std::numeric_limits<std::int64_t>::max()).startsWith(u"2262-04-1"_s));
        QVERIFY(!written(QTimeZone(), 0).isEmpty());
    }

    void suffix_data()
    {
        QTest::addColumn<int>("offset");
        QTest::addColumn<QString>("text");
        QTest::newRow("east") << 3600 << u"+0100"_s;
        QTest::newRow("west") << -18000 << u"-0500"_s;
        QTest::newRow("half hours") << 19800 << u"+0530"_s;
        QTest::newRow("half hours west") << -12600 << u"-0330"_s;
        QTest::newRow("none") << 0 << u"+0000"_s;
        QTest::newRow("less than an hour west") << -1800 << u"-0030"_s;
    }

    void suffix()
    {
        QFETCH(int, offset);
        QTEST(zoneSuffix(offset), "text");
    }

    void reads_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("date"); // invalid: does not read
        const auto utc = [](int hour, int minute) {
            return QDateTime({2024, 3, 7}, {hour, minute, 9, 31}, QTimeZone::utc());
        };
        QTest::newRow("east") << u"2024-03-07 14:05:09.031250+0100"_s << utc(13, 5);
        QTest::newRow("west, half hours") << u"2024-03-07 14:05:09.031250-0330"_s << utc(17, 35);
        for (const char* bad :
             {"", "2024-03-07", "2024-03-07 14:05:09.031250", "2024-03-07 14:05:09.03125+0100",
              "2024-03-07 14:05:09.031250+01:00", "2024-03-07 14:05:09.031250+0100 ",
              "2024-02-30 14:05:09.031250+0100", "2024-03-07 24:05:09.031250+0100",
              "2024-03-07 14:60:09.031250+0100", "2024-03-07T14:05:09.031250+0100",
              "2024-03-07 14:05:09.031250+0160", "2024-03-07 14:05:09.031250Z0100",
              "2024-03-07 14:05:-9.031250+0100"})
            QTest::addRow("not \"%s\"", bad) << QString::fromLatin1(bad) << QDateTime();
    }

    void reads()
    {
        QFETCH(QString, text);
        QFETCH(QDateTime, date);
        const auto read = readEntryDate(Text(text));
        QCOMPARE(read.has_value(), date.isValid());
        QCOMPARE(read.value_or(QDateTime()), date);
    }

    void readsWhatItWrites()
    {
        const QTimeZone zone("America/New_York");
        const QDateTime date({2024, 11, 3}, {12, 30, 1, 7}, zone);
        EntryDateWriter write(zone, zoneSuffix(zone.offsetFromUtc(date)));
        QCOMPARE(readEntryDate(write(date.toMSecsSinceEpoch() * 1'000'000)), date);
    }
};

TESSEL_TEST(TestEntryDate)
#include "tst_entrydate.moc"
