// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "support/predicategenerator.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

namespace {

constexpr int predicates = 150;
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

} // namespace

/// Pairs of predicates that are the same for every entry.
class TestLaws : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void logic()
    {
        PredicateGenerator generator(2);
        for (int i = 0; i < predicates && !QTest::currentTestFailed(); ++i) {
            const std::string p = '(' + generator.condition(2) + ')';
            const std::string q = '(' + generator.condition(2) + ')';
            verifySame(generator, "NOT NOT " + p, p);
            verifySame(generator, p + " AND " + q, q + " && " + p);
            verifySame(generator, p + " OR " + q, q + " || " + p);
            verifySame(generator, "NOT (" + p + " AND " + q + ')', "NOT " + p + " OR NOT " + q);
            verifySame(generator, p + " OR " + p + " AND " + q, p);
            verifySame(generator, "TERNARY(" + p + ", 1, 2) == 1", p);
        }
    }

    void comparisons()
    {
        PredicateGenerator generator(3);
        for (int i = 0; i < predicates && !QTest::currentTestFailed(); ++i) {
            const std::string a =
                generator.oneOf({"process", "subsystem", "eventMessage", "processID", "size",
                                 "'" + generator.text() + "'", "1", "nil"});
            const std::string b = generator.oneOf(
                {"process", "category", "'" + generator.text() + "'", "processID", "0", "nil"});
            const std::string options = generator.oneOf({"", "[c]", "[d]", "[cd]"});
            verifySame(generator, a + " !=" + options + ' ' + b,
                       "NOT " + a + " ==" + options + ' ' + b);
            verifySame(generator, a + " ==" + options + ' ' + b, b + " ==" + options + ' ' + a);
            verifySame(generator,
                       "process CONTAINS" + options + " '" + generator.text()
                           + "' AND process == nil",
                       "FALSEPREDICATE");
            const std::string t = "'" + generator.text() + "'";
            verifySame(generator, "process CONTAINS" + options + ' ' + t,
                       t + " IN" + options + " process");
            const std::string sameLength = " AND process.length == " + t + ".length";
            verifySame(generator,
                       "process BEGINSWITH" + options + ' ' + t + " AND process ENDSWITH" + options
                           + ' ' + t + sameLength,
                       "process ==" + options + ' ' + t + sameLength + " AND process != ''");
            verifySame(generator, "process <" + options + ' ' + t, t + " >" + options + " process");
            verifySame(generator,
                       "process <=" + options + ' ' + t + " AND process !=" + options + ' ' + t,
                       "process <" + options + ' ' + t);
        }
    }

    void lists()
    {
        PredicateGenerator generator(4);
        for (int i = 0; i < predicates && !QTest::currentTestFailed(); ++i) {
            const std::string options = generator.oneOf({"", "[c]", "[d]", "[cd]"});
            const std::string a = "'" + generator.text() + "'";
            const std::string b = generator.sometimes() ? "sender" : "'" + generator.text() + "'";
            const std::string list = '{' + a + ", " + b + '}';
            verifySame(generator, "process IN" + options + ' ' + list,
                       "process != nil AND (process ==" + options + ' ' + a
                           + " OR process ==" + options + ' ' + b + ')');
            verifySame(generator, "process IN" + options + ' ' + list,
                       list + " CONTAINS" + options + " process");
            verifySame(generator, "NONE " + list + " ==" + options + " process",
                       "NOT ANY " + list + " ==" + options + " process");
            verifySame(generator, "ALL " + list + " IN" + options + " process",
                       a + " IN" + options + " process AND " + b + " IN" + options + " process");
            verifySame(generator,
                       "ANY TERNARY(TRUEPREDICATE, " + list + ", {}) IN" + options + " process",
                       "SOME " + list + " IN" + options + " process");
            verifySame(generator, "process BETWEEN" + options + ' ' + list,
                       "process != nil AND " + b + " != nil AND process >=" + options + ' ' + a
                           + " AND process <=" + options + ' ' + b);
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

private:
    static void
    verifySame(PredicateGenerator& generator, const std::string& left, const std::string& right)
    {
        const auto first = build(left);
        QVERIFY2(first, (left + ": " + (first ? "" : first.error().sentence)).c_str());
        const auto second = build(right);
        QVERIFY2(second, (right + ": " + (second ? "" : second.error().sentence)).c_str());
        Matcher a(*first);
        Matcher b(*second);
        for (int i = 0; i < entriesEach; ++i) {
            const MadeUpEntry entry = generator.entry();
            QVERIFY2(a.matches(entry) == b.matches(entry), (left + "\n" + right).c_str());
        }
    }
};

TESSEL_TEST(TestLaws)
#include "tst_laws.moc"
