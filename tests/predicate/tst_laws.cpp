// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "support/predicategenerator.h"
#include "support/predicateprinter.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

namespace {

constexpr int entriesEach = 12;

bool equals(const Node& left, const Node& right, Options options, const EntryFields& entry)
{
    Node node;
    node.kind = NodeKind::Comparison;
    node.options = options;
    node.children = {left, right};
    return Matcher(*bind({std::move(node), {}})).matches(entry);
}

bool isMember(const Node& value, const Node& list, Options options, const EntryFields& entry)
{
    Node nil;
    nil.kind = NodeKind::Constant;
    return !equals(value, nil, {}, entry)
           && std::any_of(list.children.begin(), list.children.end(), [&](const Node& element) {
                  return equals(value, element, options, entry);
              });
}

/// The outcome when each comparison is evaluated by itself, and with one element of a list at a
/// time: nothing is shared that a whole predicate shares among its comparisons.
bool outcomeOfParts(const Node& node, const EntryFields& entry)
{
    const auto holds = [&](const Node& part) { return outcomeOfParts(part, entry); };
    const std::vector<Node>& children = node.children;
    const auto isList = [&](std::size_t side) { return children[side].kind == NodeKind::List; };
    if (node.kind == NodeKind::Not)
        return !holds(children.front());
    if (node.kind == NodeKind::And)
        return std::all_of(children.begin(), children.end(), holds);
    if (node.kind == NodeKind::Or)
        return std::any_of(children.begin(), children.end(), holds);
    if (node.kind != NodeKind::Comparison)
        return node.kind == NodeKind::True;
    if (node.quantifier != Quantifier::One) {
        std::vector<Node> each;
        for (const Node& element : children.front().children) {
            each.push_back(node);
            each.back().quantifier = Quantifier::One;
            each.back().children.front() = element;
        }
        return node.quantifier == Quantifier::All   ? std::all_of(each.begin(), each.end(), holds)
               : node.quantifier == Quantifier::Any ? std::any_of(each.begin(), each.end(), holds)
                                                    : std::none_of(each.begin(), each.end(), holds);
    }
    if (node.comparison == Operator::In && isList(1))
        return isMember(children[0], children[1], node.options, entry);
    if (node.comparison == Operator::Contains && isList(0))
        return isMember(children[1], children[0], node.options, entry);
    return Matcher(*bind({node, {}})).matches(entry);
}

/// Two texts of one meaning.
using Law = std::pair<std::string, std::string>;

std::vector<Law> lawsOfLogic(PredicateGenerator& generator)
{
    const std::string p = '(' + generator.condition(2) + ')';
    const std::string q = '(' + generator.condition(2) + ')';
    return {{"NOT NOT " + p, p},
            {p + " AND " + q, q + " && " + p},
            {p + " OR " + q, q + " || " + p},
            {"NOT (" + p + " AND " + q + ')', "NOT " + p + " OR NOT " + q},
            {p + " OR " + p + " AND " + q, p},
            {"TERNARY(" + p + ", 1, 2) == 1", p}};
}

std::vector<Law> lawsOfComparisons(PredicateGenerator& generator)
{
    const std::string t = "'" + generator.text() + "'";
    const std::string a = generator.oneOf(
        {"process", "subsystem", "eventMessage", "processID", "size", t, "1", "nil"});
    const std::string b = generator.oneOf({"process", "category", t, "processID", "0", "nil"});
    const std::string o = generator.oneOf({"", "[c]", "[d]", "[cd]"}) + ' ';
    const std::string sameLength = " AND process.length == " + t + ".length";
    return {{a + " !=" + o + b, "NOT " + a + " ==" + o + b},
            {a + " ==" + o + b, b + " ==" + o + a},
            {"process CONTAINS" + o + t + " AND process == nil", "FALSEPREDICATE"},
            {"process CONTAINS" + o + t, t + " IN" + o + "process"},
            {"process BEGINSWITH" + o + t + " AND process ENDSWITH" + o + t + sameLength,
             "process ==" + o + t + sameLength + " AND process != ''"},
            {"process <" + o + t, t + " >" + o + "process"},
            {"process <=" + o + t + " AND process !=" + o + t, "process <" + o + t},
            {"process >=" + o + t, t + " <=" + o + "process"}};
}

std::vector<Law> lawsOfLists(PredicateGenerator& generator)
{
    const std::string o = generator.oneOf({"", "[c]", "[d]", "[cd]"}) + ' ';
    const std::string a = "'" + generator.text() + "'";
    const std::string b = generator.sometimes() ? "sender" : "'" + generator.text() + "'";
    const std::string list = '{' + a + ", " + b + '}';
    return {{"process IN" + o + list,
             "process != nil AND (process ==" + o + a + " OR process ==" + o + b + ')'},
            {"process IN" + o + list, list + " CONTAINS" + o + "process"},
            {"NONE " + list + " ==" + o + "process", "NOT ANY " + list + " ==" + o + "process"},
            {"ALL " + list + " IN" + o + "process",
             a + " IN" + o + "process AND " + b + " IN" + o + "process"},
            {"ANY TERNARY(TRUEPREDICATE, " + list + ", {}) IN" + o + "process",
             "SOME " + list + " IN" + o + "process"},
            {"process BETWEEN" + o + list, "process != nil AND " + b + " != nil AND process >=" + o
                                               + a + " AND process <=" + o + b}};
}

/// An entry that tells each field, and counts how often it is asked.
class CountingEntry : public EntryFields
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

} // namespace

/// What holds for every predicate and every entry.
class TestLaws : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void bothTextsHaveOneMeaning()
    {
        PredicateGenerator generator(2);
        for (int i = 0; i < 450; ++i) {
            const auto& laws = i % 3 == 0   ? lawsOfLogic
                               : i % 3 == 1 ? lawsOfComparisons
                                            : lawsOfLists;
            for (const auto& [left, right] : laws(generator)) {
                const auto first = build(left);
                QVERIFY2(first, (left + ": " + (first ? "" : first.error().sentence)).c_str());
                const auto second = build(right);
                QVERIFY2(second, (right + ": " + (second ? "" : second.error().sentence)).c_str());
                Matcher a(*first);
                Matcher b(*second);
                for (int j = 0; j < entriesEach; ++j) {
                    const MadeUpEntry entry = generator.entry();
                    QVERIFY2(a.matches(entry) == b.matches(entry), (left + "\n" + right).c_str());
                }
            }
        }
    }

    void wholesAgreeWithTheirParts()
    {
        PredicateGenerator generator(9);
        int matches = 0;
        for (int i = 0; i < 4'000; ++i) {
            const std::string text = generator.condition(2);
            const auto tree = parse(text);
            QVERIFY2(tree, text.c_str());
            Matcher matcher(*bind(*tree));
            for (int j = 0; j < 5; ++j) {
                const MadeUpEntry entry = generator.entry();
                const bool outcome = matcher.matches(entry);
                QVERIFY2(outcome == outcomeOfParts(tree->root, entry), text.c_str());
                matches += outcome ? 1 : 0;
            }
        }
        QVERIFY(matches > 4'000 && matches < 16'000);
    }

    void whatIsPrintedParsesBack()
    {
        PredicateGenerator generator(1);
        for (int i = 0; i < 3000; ++i) {
            const std::string text = generator.condition(4);
            const auto tree = parse(text);
            QVERIFY2(tree, text.c_str());
            const Printed printed = print(*tree);
            const auto again = parse(printed.text, printed.arguments);
            QVERIFY2(again && *again == *tree, text.c_str());
        }
    }

    void whatMatchesIsPossible()
    {
        PredicateGenerator generator(5);
        int ruledOut = 0;
        for (int i = 0; i < 1500; ++i) {
            const std::string text = generator.condition(3);
            const auto built = build(text);
            QVERIFY2(built, text.c_str());
            Matcher matcher(*built);
            MadeUpEntry entry = generator.entry();
            std::vector<Field> known = {Field::Process, Field::ProcessIdentifier};
            if (generator.sometimes())
                known.insert(known.end(), {Field::Subsystem, Field::Category});
            Fields fields;
            for (const Field field : known)
                fields.set(static_cast<std::size_t>(field));
            const bool possible = matcher.possible(PartOfEntry(entry, fields));
            ruledOut += possible ? 0 : 1;
            for (int j = 0; j < 10; ++j) {
                MadeUpEntry other = generator.entry();
                const auto kind = *other.kind();
                if (kind != EntryKind::Log && kind != EntryKind::Signpost)
                    continue; // carries none of the fields to begin with
                for (const Field field : known)
                    other.set(field, entry.field(field));
                QVERIFY2(possible || !matcher.matches(other), text.c_str());
            }
        }
        QVERIFY2(ruledOut > 100, "hardly anything was ruled out, so little was tested");
    }

    void fieldsAreAskedForOnceAndOnlyWhenNeeded()
    {
        const auto any =
            build("eventMessage CONTAINS 'a' OR sender == 'a' OR eventMessage ENDSWITH "
                  "'b' OR signpostName == 'c' OR subsystem == 'x'");
        CountingEntry cheapDecides;
        QVERIFY(Matcher(*any).matches(cheapDecides));
        QCOMPARE(cheapDecides.asked.size(), std::size_t{1});
        const auto all = build("eventMessage CONTAINS 'x' AND process == 'x' AND NOT eventMessage "
                               "CONTAINS 'z' AND signpostName == nil");
        CountingEntry everythingNeeded;
        QVERIFY(Matcher(*all).matches(everythingNeeded));
        QCOMPARE(everythingNeeded.asked.at(Field::ComposedMessage), 1);
        QVERIFY(!everythingNeeded.asked.contains(Field::SignpostName));
    }
};

TESSEL_TEST(TestLaws)
#include "tst_laws.moc"
