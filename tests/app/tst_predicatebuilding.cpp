// SPDX-License-Identifier: MIT
#include "app/predicatebuilding.h"
#include "platform/oslogstore.h"
#include "settings/predicatelibrary.h"
#include "support/fakeplatform.h"
#include "support/smallstore.h"
#include "support/testcase.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr std::int64_t second = 1'000'000'000;

} // namespace

class TestPredicateBuilding : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_platform = std::make_unique<FakePlatform>();
    }

    void predicatesChooseEntries_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("found");
        const auto row = [](const char* name, const char* format, const QStringList& arguments,
                            const char* found) {
            QTest::newRow(name) << QString::fromUtf8(format) << arguments
                                << QString::fromUtf8(found);
        };
        row("plain", "eventMessage == \"one\"", {}, "one");
        row("an argument", "eventMessage CONTAINS[c] %@", {u"TW"_s}, "two");
        row("an argument with quotes", "eventMessage CONTAINS[c] %@", {u"\"É\""_s}, "say \"é\"");
        // The fake clock's zone is an hour ahead of UTC.
        row("a date in the user's zone", "date > \"2024-03-07 14:05:08\"", {}, "two say \"é\"");
        row("the present", "date > now()", {}, "say \"é\"");
    }

    void predicatesChooseEntries()
    {
        QFETCH(QString, format);
        QFETCH(QStringList, arguments);
        const std::int64_t now = m_platform->clock.now().toSecsSinceEpoch() * second;
        SmallStore store(now - 100 * second);
        store.log(now - 2 * second, "one");
        store.log(now, "two");
        store.log(now + second, "say \"é\"");
        const QString folder = m_platform->folder.filePath(u"store"_s);
        QVERIFY(store.write(folder));

        const auto filter = predicateBuilder(m_platform->clock)({format, arguments});
        QVERIFY2(filter, filter ? "" : filter.error().description.c_str());
        const auto opened = OSLogStore::open(folder);
        QVERIFY(opened);
        auto entries = opened->getEntries(opened->position(-200), *filter);
        QStringList found;
        while (const logstore::Entry* entry = entries.next())
            found.append(QString::fromStdString(std::string(entry->composedMessage())));
        QTEST(found.join(u' '), "found");
    }

    void midnightsThatClocksSkip_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QString>("begins");
        QTest::newRow("west of Greenwich")
            << "America/Sao_Paulo"_ba << u"2018-11-04"_s << u"2018-11-04 03:00Z"_s;
        QTest::newRow("east of Greenwich")
            << "Asia/Beirut"_ba << u"2019-03-31"_s << u"2019-03-30 22:00Z"_s;
        QTest::newRow("a day that was none")
            << "Pacific/Apia"_ba << u"2011-12-30"_s << u"2011-12-30 10:00Z"_s;
    }

    void midnightsThatClocksSkip()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QString, day);
        QFETCH(QString, begins);
        m_platform->clock.zone = QTimeZone(zone);
        const std::int64_t now = m_platform->clock.now().toSecsSinceEpoch() * second;
        SmallStore store(now);
        store.log(now, "one");
        const QString folder = m_platform->folder.filePath(u"store"_s);
        QVERIFY(store.write(folder));
        const auto filter = predicateBuilder(m_platform->clock)(
            {u"CAST('%1', 'NSDate') == CAST('%2', 'NSDate')"_s.arg(day, begins), {}});
        QVERIFY2(filter, filter ? "" : filter.error().description.c_str());
        const auto opened = OSLogStore::open(folder);
        QVERIFY(opened);
        QVERIFY(opened->getEntries(opened->position(-200), *filter).next());
    }

    void errorsShowThePlace()
    {
        const auto filter = predicateBuilder(m_platform->clock)({u"proces == \"x\""_s, {}});
        QVERIFY(!filter);
        const QString text = QString::fromStdString(filter.error().description);
        QVERIFY2(text.contains(u"Did you mean process?"_s), qPrintable(text));
        QVERIFY2(text.contains(u"proces == \"x\""_s), qPrintable(text));
    }

    void checkTellsWhatIsWrongAndWhere_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("wrong");
        const auto row = [](const char* name, const char* text, const char* wrong) {
            QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(wrong);
        };
        row("nothing", "process == \"x\"", "");
        row("in the only line", "(process == 'x'",
            "Character 16: A closing parenthesis is missing.");
        row("behind a pair of surrogates", "'📍' == ?", "Character 8: “?” can't be used here.");
        row("in a later line", "process == 'x' AND\nnosuch == 1",
            "Line 2, character 1: There is no field “nosuch”.");
        row("before a line break", "process ?= 'x'\n",
            "Line 1, character 9: “?” can't be used here.");
        row("without an argument", "process == %@",
            "Character 12: Insufficient arguments: “%@” has no value to stand for.");
    }

    void checkTellsWhatIsWrongAndWhere()
    {
        QFETCH(QString, text);
        QTEST(predicateCheck(m_platform->clock)(text).value_or(QString()), "wrong");
    }

    void libraryIsValid()
    {
        const PredicateCheck check = predicateCheck(m_platform->clock);
        for (const QString& text : defaultPredicateTexts()) {
            if (!text.isEmpty())
                QVERIFY2(!check(text), qPrintable(text));
        }
    }

    void manualsExamplesAreValid()
    {
        QFile manual(QFINDTESTDATA("../../resources/help/TesselHelp.html"));
        QVERIFY(manual.open(QFile::ReadOnly));
        const QString text = QString::fromUtf8(manual.readAll());
        const qsizetype table = text.indexOf(u"<h1>Predicates at work</h1>"_s);
        const QString rows = text.mid(table, text.indexOf(u"</table>"_s, table) - table);
        const QRegularExpression row(u"<tr><td><code>(.*?)</code>"_s,
                                     QRegularExpression::DotMatchesEverythingOption);
        const PredicateCheck check = predicateCheck(m_platform->clock);
        int found = 0;
        for (const QRegularExpressionMatch& match : row.globalMatch(rows)) {
            QString predicate = match.captured(1);
            predicate.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s);
            const auto wrong = check(predicate);
            QVERIFY2(!wrong, qPrintable(predicate + u": "_s + wrong.value_or(QString())));
            ++found;
        }
        QVERIFY(found > 8);
    }

private:
    std::unique_ptr<FakePlatform> m_platform;
};

TESSEL_TEST(TestPredicateBuilding)
#include "tst_predicatebuilding.moc"
