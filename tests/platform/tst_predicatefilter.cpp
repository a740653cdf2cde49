// SPDX-License-Identifier: MIT
#include "platform/demonstrationstore.h"
#include "platform/logstore/entry.h"
#include "platform/logstore/store.h"
#include "platform/predicatefilter.h"
#include "support/predicategenerator.h"
#include "support/samples.h"
#include "support/smallstore.h"
#include "support/testcase.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <set>

using namespace Qt::StringLiterals;
using logstore::Entry;

namespace {

using Test = std::function<bool(const Entry&)>;

/// What tells an entry from all others of its store.
QByteArray trace(const Entry& entry)
{
    return QByteArray::number(qlonglong(entry.time())) + ' '
           + QByteArray::number(qulonglong(entry.continuousTime())) + ' '
           + QByteArray::number(int(entry.kind())) + ' '
           + QByteArray::number(qulonglong(entry.threadIdentifier()));
}

QByteArrayList tracesOf(logstore::EntryStream stream, const Test& test)
{
    QByteArrayList traces;
    while (const Entry* entry = stream.next()) {
        if (test(*entry))
            traces += trace(*entry);
    }
    return traces;
}

QChar letter(logstore::EntryKind kind)
{
    switch (kind) {
    case logstore::EntryKind::Log: return u'L';
    case logstore::EntryKind::Activity: return u'A';
    case logstore::EntryKind::Boundary: return u'B';
    case logstore::EntryKind::Signpost: return u'S';
    default: return u'O';
    }
}

/// A predicate that is asked about every entry, and never about a process or a subsystem.
class UnskippingFilter : public logstore::EntryFilter
{
public:
    explicit UnskippingFilter(predicate::Predicate predicate) : m_filter(std::move(predicate)) {}
    bool matches(const Entry& entry) const override { return m_filter.matches(entry); }

private:
    PredicateFilter m_filter;
};

bool isOfProcess(const Entry& entry)
{
    return entry.hasProcess();
}

} // namespace

/// Predicates over the entries of real archives, beside tests written out in code.
class TestPredicateFilter : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void fieldsOfEveryKind_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kinds"); // Boundary, Log, Signpost, Activity, Other
        const auto row = [](const char* name, const QString& text, const QString& kinds) {
            QTest::newRow(name) << text << kinds;
        };
        row("all", u"TRUEPREDICATE"_s, u"BLSAO"_s);
        row("date", u"date >= '2024-03-07 13:05:00' AND date < '2024-03-07 13:05:03'"_s, u"LSA"_s);
        row("process",
            u"process == 'quillond' AND processImagePath == '/usr/libexec/quillond' AND pid == 311 AND uid >= 0"_s,
            u"LSAO"_s);
        row("no process",
            u"process == nil AND processID == nil AND processImageUUID == nil AND uid == nil"_s,
            u"B"_s);
        row("process's image", u"processImageUUID == 'c0ffee00-0000-4000-8000-000000000002'"_s,
            u"LSAO"_s);
        row("sender",
            u"sender == 'quillond' AND senderImagePath ENDSWITH '/quillond' AND senderImageUUID BEGINSWITH 'C0FFEE'"_s,
            u"LSA"_s);
        row("boot",
            u"bootUUID == 'B0075EED-0000-4000-8000-000000000001' AND machTimestamp >= 0 AND continuousNanosecondsSinceBoot >= 0"_s,
            u"BLSAO"_s);
        row("subsystem", u"subsystem == 'org.tessel.quillon' AND category == 'sync'"_s, u"LS"_s);
        row("no subsystem", u"subsystem == nil AND category == nil"_s, u"BAO"_s);
        row("message", u"eventMessage == 'mounted disk4s2'"_s, u"L"_s);
        row("boundary's message", u"eventMessage BEGINSWITH '=== system boot'"_s, u"B"_s);
        row("format", u"formatString == '%{public}s' OR format CONTAINS 'signpost'"_s, u"LS"_s);
        row("level", u"messageType == fault AND level == fault AND logType == 17 AND level == 5"_s,
            u"L"_s);
        row("no level", u"messageType == nil AND level == nil"_s, u"BSAO"_s);
        row("log event", u"eventType == logEvent"_s, u"L"_s);
        row("signpost event", u"eventType == signpostEvent"_s, u"S"_s);
        row("activity event", u"type == activityCreateEvent"_s, u"A"_s);
        row("loss event", u"eventType == 1792"_s, u"O"_s);
        row("boot is no known event", u"eventType == nil"_s, u"B"_s);
        row("activity", u"activityIdentifier == 9"_s, u"LA"_s);
        row("activity's parent",
            u"parentActivityIdentifier == 3 AND creatorActivityIdentifier != nil AND creatorProcessUniqueIdentifier != nil"_s,
            u"A"_s);
        row("no transition", u"transitionActivityIdentifier == nil"_s, u"BLSAO"_s);
        row("thread", u"threadIdentifier == 90210"_s, u"LSA"_s);
        row("signpost",
            u"signpostName == 'drawFrame' AND signpostID == 7 AND signpostType == begin AND signpostScope == process"_s,
            u"S"_s);
        row("no signpost",
            u"signpostID == nil AND signpostType == nil AND signpostScope == nil AND signpostName == nil"_s,
            u"BLAO"_s);
        row("store category", u"storeCategory == 1"_s, u"B"_s);
        row("time to live", u"ttl == nil"_s, u"BSA"_s);
        row("size", u"size == nil"_s, u"B"_s);
        row("place of the code", u"senderImageOffset != nil AND traceID != nil"_s, u"LSA"_s);
    }

    void fieldsOfEveryKind()
    {
        constexpr qint64 second = 1'000'000'000;
        constexpr qint64 time = 1'709'816'700 * second; // 2024-03-07 13:05:00 UTC
        constexpr std::uint8_t fault = 0x11;
        const QTemporaryDir folder;
        SmallStore small(time - second);
        small.log(time, "mounted disk4s2", fault, 9);
        small.signpost(time + second, "drawFrame");
        small.activity(time + 2 * second, "Copy items", 9, 3);
        small.loss(time + 3 * second, 5);
        QVERIFY(small.write(folder.filePath(u"small.logarchive"_s)));
        const auto store =
            logstore::Store::open(folder.filePath(u"small.logarchive"_s).toStdString());
        QVERIFY(store);

        QFETCH(const QString, text);
        const auto built = predicate::build(text.toStdString());
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
        auto stream =
            store->entries(logstore::Store::beginning, std::make_shared<PredicateFilter>(*built));
        QString kinds;
        while (const Entry* entry = stream.next())
            kinds += letter(entry->kind());
        QTEST(kinds, "kinds");
    }

    void filteredStreams_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Test>("test");
        const auto row = [](const char* name, const QString& text, const Test& test) {
            QTest::newRow(name) << text << test;
        };
        using logstore::EntryKind;
        using logstore::Level;
        row("subsystem",
            u"subsystem == 'com.apple.launchservices' OR subsystem CONTAINS 'network'"_s,
            [](const Entry& entry) {
                return entry.subsystem() == "com.apple.launchservices"
                       || entry.subsystem().find("network") != std::string_view::npos;
            });
        row("no subsystem", u"subsystem == nil"_s,
            [](const Entry& entry) { return entry.subsystem().empty(); });
        row("category", u"category BEGINSWITH 'd' AND NOT subsystem ENDSWITH 's'"_s,
            [](const Entry& entry) {
                return entry.category().substr(0, 1) == "d"
                       && (entry.subsystem().empty() || entry.subsystem().back() != 's');
            });
        row("process", u"processID < 100 AND process != 'kernel'"_s, [](const Entry& entry) {
            return isOfProcess(entry) && entry.processIdentifier() < 100
                   && entry.process() != "kernel";
        });
        row("no process", u"process == nil"_s,
            [](const Entry& entry) { return entry.process().empty(); });
        row("level", u"messageType >= error"_s, [](const Entry& entry) {
            return entry.kind() == EntryKind::Log && entry.level() >= Level::Error;
        });
        row("not a level", u"NOT messageType == default"_s, [](const Entry& entry) {
            return entry.kind() != EntryKind::Log || entry.level() != Level::Notice;
        });
        row("kind", u"eventType IN {activityCreateEvent, userActionEvent, signpostEvent}"_s,
            [](const Entry& entry) {
                return entry.kind() == EntryKind::Activity || entry.kind() == EntryKind::Signpost;
            });
        row("other kinds", u"eventType == lossEvent OR eventType == stateEvent"_s,
            [](const Entry& entry) { return entry.kind() == EntryKind::Other; });
        row("message", u"eventMessage CONTAINS 'error' OR eventMessage LIKE '*=== system*'"_s,
            [](const Entry& entry) {
                return entry.composedMessage().find("error") != std::string_view::npos
                       || entry.composedMessage().find("=== system") != std::string_view::npos;
            });
        row("sender", u"senderImagePath ENDSWITH 'd' AND threadIdentifier > 1000"_s,
            [](const Entry& entry) {
                const std::string_view path = entry.senderImagePath();
                return !path.empty() && path.back() == 'd' && entry.threadIdentifier() > 1000;
            });
        row("nothing", u"subsystem == 'x' AND eventMessage CONTAINS 'y'"_s,
            [](const Entry&) { return false; });
        row("everything", u"date > '2000-01-01' AND bootUUID != nil OR size == nil"_s,
            [](const Entry&) { return true; });
    }

    void filteredStreams()
    {
        SKIP_WITHOUT_SAMPLES();
        QFETCH(const QString, text);
        QFETCH(const Test, test);
        const auto built = predicate::build(text.toStdString());
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
        const QDir samples(QString::fromStdString(samplesFolder()->string()));
        for (const QString& name : samples.entryList({u"*.logarchive"_s}, QDir::Dirs)) {
            const auto store = logstore::Store::open(samples.filePath(name).toStdString());
            QVERIFY2(store, qPrintable(name));
            const auto filter = std::make_shared<PredicateFilter>(*built);
            const auto all = [](const Entry&) { return true; };
            QCOMPARE(tracesOf(store->entries(logstore::Store::beginning, filter), all),
                     tracesOf(store->entries(), test));
        }
    }

    void skippingLosesNothing()
    {
        const QTemporaryDir folder;
        const auto root = std::filesystem::path(folder.path().toStdString());
        QVERIFY(DemonstrationStore(root).writeUntil(1'709'816'700'000'000'000));
        const auto store = logstore::Store::open(root);
        QVERIFY(store);
        std::set<std::string> texts;
        auto whole = store->entries();
        while (const Entry* entry = whole.next()) {
            for (const std::string_view text :
                 {entry->process(), entry->subsystem(), entry->category(), entry->sender()})
                texts.emplace(text);
        }
        PredicateGenerator generator(11, {texts.begin(), texts.end()});
        const auto all = [](const Entry&) { return true; };
        int some = 0;
        for (int i = 0; i < 60; ++i) {
            const std::string text =
                generator.oneOf({"", "", "subsystem == NIL AND ", "category != NIL AND "}) + '('
                + generator.condition(2) + ')';
            const auto built = predicate::build(text);
            QVERIFY2(built, text.c_str());
            constexpr std::int64_t from = logstore::Store::beginning;
            const QByteArrayList skipping =
                tracesOf(store->entries(from, std::make_shared<PredicateFilter>(*built)), all);
            const QByteArrayList asking =
                tracesOf(store->entries(from, std::make_shared<UnskippingFilter>(*built)), all);
            QVERIFY2(skipping == asking, text.c_str());
            some += skipping.isEmpty() ? 0 : 1;
        }
        QVERIFY(some > 20);
    }
};

TESSEL_TEST(TestPredicateFilter)
#include "tst_predicatefilter.moc"
