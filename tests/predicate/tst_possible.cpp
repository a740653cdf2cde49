// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/fieldtable.h"
#include "platform/predicate/predicate.h"
#include "support/predicategenerator.h"
#include "support/testcase.h"

#include <QTest>

#include <set>

using namespace Qt::StringLiterals;
using namespace predicate;

namespace {

/// An entry of which only some fields are told.
class PartOfEntry : public EntryFields
{
public:
    PartOfEntry(const MadeUpEntry& entry, std::set<Field> known)
        : m_entry(entry)
        , m_known(std::move(known))
    {
    }

    std::optional<EntryKind> kind() const override { return std::nullopt; }
    Value field(Field field) const override
    {
        return m_known.contains(field) ? m_entry.field(field) : Value::unknown();
    }

private:
    const MadeUpEntry& m_entry;
    std::set<Field> m_known;
};

} // namespace

class TestPossible : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void knownProcess_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("possible");
        const auto row = [](const char* name, const QString& text, bool possible) {
            QTest::newRow(name) << text << possible;
        };
        row("its process", u"process == 'backupd'"_s, true);
        row("another process", u"process == 'kernel'"_s, false);
        row("another process or a message", u"process == 'kernel' OR eventMessage CONTAINS 'x'"_s,
            true);
        row("another process and a message", u"eventMessage CONTAINS 'x' AND process == 'kernel'"_s,
            false);
        row("not its process", u"NOT process == 'backupd'"_s, false);
        row("not a message", u"NOT eventMessage CONTAINS 'x'"_s, true);
        row("unknown subsystem", u"subsystem == 'com.example'"_s, true);
        row("unknown compared with itself", u"subsystem != subsystem"_s, true);
        row("identifier in a list", u"processID IN {1, 2} AND messageType == error"_s, false);
        row("empty path is nil", u"processImagePath CONTAINS '/' AND sender == 'x'"_s, false);
        row("one element known", u"ANY {process, sender} == 'kernel'"_s, true);
        row("all elements", u"ALL {process, sender} == 'kernel'"_s, false);
        row("arithmetic", u"processID + size > 5"_s, true);
        row("choice by the unknown", u"TERNARY(messageType == error, process, 'x') == 'y'"_s, true);
        row("constant", u"FALSEPREDICATE"_s, false);
    }

    void knownProcess()
    {
        QFETCH(const QString, text);
        MadeUpEntry entry;
        entry.set(Field::Process, Value::text("backupd"));
        entry.set(Field::ProcessIdentifier, Value::integer(312));
        entry.set(Field::ProcessImagePath, Value::text(""));
        const PartOfEntry part(entry,
                               {Field::Process, Field::ProcessIdentifier, Field::ProcessImagePath});
        const auto built = build(text.toStdString());
        QVERIFY(built);
        QTEST(Matcher(*built).possible(part), "possible");
    }

    void neverRulesOutWhatMatches()
    {
        PredicateGenerator generator(5);
        int ruledOut = 0;
        for (int i = 0; i < 1500; ++i) {
            const std::string text = generator.condition(3);
            const auto built = build(text);
            QVERIFY2(built, text.c_str());
            Matcher matcher(*built);
            MadeUpEntry entry = generator.entry();
            const PartOfEntry part(entry, {Field::Process, Field::ProcessIdentifier});
            const bool possible = matcher.possible(part);
            ruledOut += possible ? 0 : 1;
            for (int j = 0; j < 10 && entry.kind() != EntryKind::Boundary; ++j) {
                MadeUpEntry other = generator.entry();
                if (other.kind() == EntryKind::Boundary)
                    continue; // carries no process to begin with
                other.set(Field::Process, entry.field(Field::Process));
                other.set(Field::ProcessIdentifier, entry.field(Field::ProcessIdentifier));
                QVERIFY2(possible || !matcher.matches(other), text.c_str());
            }
        }
        QVERIFY2(ruledOut > 100, "hardly anything was ruled out, so little was tested");
    }

    void fieldsLookedAt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("fields");
        QTest::newRow("none") << u"TRUEPREDICATE OR SELF == nil"_s << u""_s;
        QTest::newRow("under any name")
            << u"pid == 1 AND library == 'a'"_s << u"processIdentifier sender"_s;
        QTest::newRow("anywhere in an expression")
            << u"{lowercase:(SELF.process)}[#size * 2] IN TERNARY(category == 'a', 'b', %K)"_s
            << u"process size category subsystem"_s;
        QTest::newRow("what a symbolic name means")
            << u"type == error AND signpostScope == process"_s << u"logType signpostScope"_s;
    }

    void fieldsLookedAt()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, fields);
        const auto built = build(text.toStdString(), {{std::string("subsystem")}});
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
        std::set<Field> expected;
        for (const QString& name : fields.split(u' ', Qt::SkipEmptyParts))
            expected.insert(fieldNamed(name.toStdString()).value());
        for (std::size_t i = 0; i < fieldCount; ++i) {
            const auto field = static_cast<Field>(i);
            QCOMPARE(built->looksAt(field), expected.contains(field));
        }
    }
};

TESSEL_TEST(TestPossible)
#include "tst_possible.moc"
