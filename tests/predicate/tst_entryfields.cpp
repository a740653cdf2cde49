// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/symbolicvalues.h"
#include "platform/predicate/predicate.h"
#include "support/predicatecases.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

Q_DECLARE_METATYPE(predicate::EntryKind)

/// What predicates ask of entries, and what they make of the answers.
class TestEntryFields : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void kindsDecideWhatIsCarried_data()
    {
        QTest::addColumn<EntryKind>("kind");
        QTest::addColumn<QString>("carried");
        QTest::addColumn<QString>("absent");
        QTest::newRow("log message")
            << EntryKind::Log << u"logType subsystem process date bootUUID"_s << u"signpostName"_s;
        QTest::newRow("activity") << EntryKind::Activity
                                  << u"process activityIdentifier date composedMessage"_s
                                  << u"logType subsystem signpostName"_s;
        QTest::newRow("boundary")
            << EntryKind::Boundary << u"composedMessage date bootUUID"_s
            << u"process processIdentifier subsystem logType activityIdentifier signpostName"_s;
        QTest::newRow("signpost") << EntryKind::Signpost << u"signpostName subsystem process"_s
                                  << u"logType"_s;
        QTest::newRow("another kind")
            << EntryKind::Other << u"process subsystem logType signpostName"_s << u""_s;
    }

    void kindsDecideWhatIsCarried()
    {
        QFETCH(const EntryKind, kind);
        MadeUpEntry entry(kind);
        for (const Field field :
             {Field::ComposedMessage, Field::Process, Field::Subsystem, Field::SignpostName})
            entry.set(field, Value::text("x"));
        for (const Field field :
             {Field::ProcessIdentifier, Field::LogType, Field::ActivityIdentifier})
            entry.set(field, Value::integer(1));
        entry.set(Field::Date, Value::date(1));
        entry.set(Field::BootUuid, Value::uuid({1}));
        const auto check = [&](const QString& fields, bool present) {
            for (const QString& field : fields.split(u' ', Qt::SkipEmptyParts)) {
                const auto built = build((field + u" != nil"_s).toStdString());
                QVERIFY(built);
                QVERIFY2(Matcher(*built).matches(entry) == present, qPrintable(field));
            }
        };
        QFETCH(const QString, carried);
        QFETCH(const QString, absent);
        check(carried, true);
        check(absent, false);
    }

    void fieldsAreAskedForOnceAndOnlyWhenNeeded()
    {
        class Counting : public EntryFields
        {
        public:
            std::optional<EntryKind> kind() const override { return EntryKind::Log; }
            Value field(Field field) const override
            {
                ++asked[field];
                return Value::text("x");
            }
            mutable std::map<Field, int> asked;
        };
        const auto built =
            build("eventMessage CONTAINS 'a' OR sender == 'a' OR eventMessage ENDSWITH "
                  "'b' OR signpostName == 'c' OR subsystem == 'x'");
        QVERIFY(built);
        Counting cheapDecides;
        QVERIFY(Matcher(*built).matches(cheapDecides));
        QCOMPARE(cheapDecides.asked.size(), std::size_t{1});
        const auto all = build("eventMessage CONTAINS 'x' AND process == 'x' AND NOT eventMessage "
                               "CONTAINS 'z' AND signpostName == nil");
        QVERIFY(all);
        Counting everythingNeeded;
        QVERIFY(Matcher(*all).matches(everythingNeeded));
        QCOMPARE(everythingNeeded.asked.at(Field::ComposedMessage), 1);
        QVERIFY(!everythingNeeded.asked.contains(Field::SignpostName));
    }

    void eventsWithoutNumber()
    {
        MadeUpEntry entry(EntryKind::Boundary);
        entry.set(Field::Type, Value::symbol(eventtype::timesync));
        const auto matches = [&](const char* text) { return Matcher(*build(text)).matches(entry); };
        QVERIFY(
            matches("eventType == timesyncEvent AND eventType IN {lossEvent, 'TimesyncEvent'} AND "
                    "eventType <= timesyncEvent"));
        QVERIFY(matches("eventType != stateEvent AND eventType != 2 AND eventType != nil"));
        QVERIFY(!matches("eventType < stateEvent OR eventType > stateEvent OR eventType > 0 OR "
                         "eventType < 100000"));
    }
};

TESSEL_TEST(TestEntryFields)
#include "tst_entryfields.moc"
