// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "platform/predicate/symbolicvalues.h"
#include "support/predicatecases.h"
#include "support/warnings.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

class SymbolicValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarnings(); }
    void outcomes_data();
    void outcomes();
    void eventsWithoutNumber();
};

void SymbolicValues::outcomes_data()
{
    QTest::addColumn<QString>("text");
    const auto holds = [](const char* name, const QString& text) { QTest::newRow(name) << text; };
    holds(
        "bare, quoted, as a number",
        u"messageType == error AND messageType == 'ERROR' AND messageType == 16 AND messageType == 0x10"_s);
    holds(
        "on the left",
        u"error == messageType AND {error, fault} CONTAINS messageType AND ANY {info, error} == messageType"_s);
    holds("among bounds",
          u"messageType BETWEEN {debug, 'fault'} AND NOT messageType BETWEEN {default, debug}"_s);
    holds("synonyms of default",
          u"messageType > default AND messageType > release AND messageType > notice"_s);
    holds(
        "levels have other numbers",
        u"level == 4 AND level == error AND level > notice AND level > default AND level < fault"_s);
    holds("escaped and of the entry", u"SELF.messageType == #error AND #messageType != fault"_s);
    holds("name before field", u"signpostScope == process AND signpostScope == 2"_s);
    holds("field when no name", u"messageType != processID AND messageType == size"_s);
    holds("type by its own names", u"type == logEvent AND type == 1024 AND type != lossEvent"_s);
    holds("type by names of message types",
          u"type == error AND type IN {error, fault} AND type >= 'info' AND error == type"_s);
    holds(
        "fields in a list",
        u"ANY {messageType} == error AND ANY {messageType, logType} == 'error' AND {messageType} == {error} AND ANY {messageType} IN {error, fault} AND NOT NONE {messageType} IN {error} AND error IN {messageType}"_s);
    holds(
        "type in a list by names of message types",
        u"ANY {type, messageType} == error AND {type} == {'error'} AND NOT ANY {type} == fault"_s);
    holds("numbers do not switch type", u"type != 16 AND type > 16"_s);
    holds("eventType never means the message type", u"eventType == logEvent"_s);
    holds(
        "signpost types",
        u"signpostType == begin AND signpostType == intervalBegin AND signpostType < end AND signpostType IN {event, 1}"_s);
    holds("nil", u"messageType != nil AND nil != messageType"_s);
}

void SymbolicValues::outcomes()
{
    QFETCH(const QString, text);
    MadeUpEntry entry(EntryKind::Other); // carries all
    entry.set(Field::LogType, Value::integer(16));
    entry.set(Field::Level, Value::integer(4));
    entry.set(Field::Type, Value::integer(eventtype::log));
    entry.set(Field::SignpostScope, Value::integer(2));
    entry.set(Field::SignpostType, Value::integer(1));
    entry.set(Field::ProcessIdentifier, Value::integer(3));
    entry.set(Field::Size, Value::integer(16));
    const auto built = build(text.toStdString());
    QVERIFY2(built, built ? "" : built.error().sentence.c_str());
    QVERIFY(Matcher(*built).matches(entry));
}

void SymbolicValues::eventsWithoutNumber()
{
    MadeUpEntry entry(EntryKind::Boundary);
    entry.set(Field::Type, Value::symbol(eventtype::timesync));
    const auto matches = [&](const char* text) { return Matcher(*build(text)).matches(entry); };
    QVERIFY(matches("eventType == timesyncEvent AND eventType IN {lossEvent, 'TimesyncEvent'} AND "
                    "eventType <= timesyncEvent"));
    QVERIFY(matches("eventType != stateEvent AND eventType != 2 AND eventType != nil"));
    QVERIFY(!matches(
        "eventType < stateEvent OR eventType > stateEvent OR eventType > 0 OR eventType < 100000"));
}

QTEST_APPLESS_MAIN(SymbolicValues)
#include "tst_symbolicvalues.moc"
