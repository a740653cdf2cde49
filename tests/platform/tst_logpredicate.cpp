// SPDX-License-Identifier: MIT
#include "platform/logpredicate.h"
#include "platform/logstore/entry.h"
#include "platform/logstore/store.h"

#include <QDir>
#include <QTest>

#include <functional>

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

bool isOfProcess(const Entry& entry)
{
    return entry.hasProcess();
}

} // namespace

/// Predicates over the entries of real archives, beside tests written out in code.
class LogPredicateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void initTestCase();
    void filteredStreams_data();
    void filteredStreams();

private:
    QDir m_samples;
};

void LogPredicateTest::initTestCase()
{
    const QString samples = qEnvironmentVariable("TESSEL_SAMPLES");
    if (samples.isEmpty())
        QSKIP("TESSEL_SAMPLES names no folder of archives");
    m_samples.setPath(samples);
}

void LogPredicateTest::filteredStreams_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Test>("test");
    const auto row = [](const char* name, const QString& text, const Test& test) {
        QTest::newRow(name) << text << test;
    };
    using logstore::EntryKind;
    using logstore::Level;
    row("subsystem", u"subsystem == 'com.apple.launchservices' OR subsystem CONTAINS 'network'"_s,
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
        return isOfProcess(entry) && entry.processIdentifier() < 100 && entry.process() != "kernel";
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

void LogPredicateTest::filteredStreams()
{
    QFETCH(const QString, text);
    QFETCH(const Test, test);
    const auto built = predicate::build(text.toStdString());
    QVERIFY2(built, built ? "" : built.error().sentence.c_str());
    for (const QString& name : m_samples.entryList({u"*.logarchive"_s}, QDir::Dirs)) {
        const auto store = logstore::Store::open(m_samples.filePath(name).toStdString());
        QVERIFY2(store, qPrintable(name));
        const auto filter = std::make_shared<LogPredicate>(*built);
        const auto all = [](const Entry&) { return true; };
        QCOMPARE(tracesOf(store->entries(logstore::Store::beginning, filter), all),
                 tracesOf(store->entries(), test));
    }
}

QTEST_APPLESS_MAIN(LogPredicateTest)
#include "tst_logpredicate.moc"
