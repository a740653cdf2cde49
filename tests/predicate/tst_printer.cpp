// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "support/predicategenerator.h"
#include "support/predicateprinter.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

class TestPrinter : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void canonicalForm_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        const auto row = [](const char* name, const QString& text, const QString& printed) {
            QTest::newRow(name) << text << printed;
        };
        row("synonyms", u"a = 1 && b <> 2 || c =< 3"_s, u"(a == 1 AND b != 2) OR c <= 3"_s);
        row("and binds tighter", u"a==1 or b==2 and c==3"_s, u"a == 1 OR (b == 2 AND c == 3)"_s);
        row("not takes one comparison", u"not a == 1 and b == 2"_s, u"NOT a == 1 AND b == 2"_s);
        row("not of a compound", u"!(a==1 and b==2)"_s, u"NOT (a == 1 AND b == 2)"_s);
        row("options in one order", u"a ==[DC] 'x'"_s, u"a ==[cd] \"x\""_s);
        row("superfluous parentheses", u"(((a)) == ((1)))"_s, u"a == 1"_s);
        row("arithmetic by precedence", u"1+2*3**4 == -5"_s, u"1 + (2 * (3 ** 4)) == -5"_s);
        row("arithmetic against precedence", u"(1+2)*3 == 4-(5-6)"_s,
            u"(1 + 2) * 3 == 4 - (5 - 6)"_s);
        row("minus before power", u"-2 ** 2 == 4"_s, u"(-2) ** 2 == 4"_s);
        row("minus of a group", u"-(a + 1) == 2"_s, u"-(a + 1) == 2"_s);
        row("reals stay reals", u"a == 2.0 or a == 1e300"_s, u"a == 2.0 OR a == 1e+300"_s);
        row("number bases", u"a == 0x10 or a == 0o17 or a == 0b11 or a == 010"_s,
            u"a == 16 OR a == 15 OR a == 3 OR a == 10"_s);
        row("the ends of the integers", u"a == -9223372036854775808 or a == 18446744073709551615"_s,
            u"a == -9223372036854775808 OR a == 18446744073709551615"_s);
        row("text escapes", u"a == 'it\\'s \"q\" \\\\ \\u00e9\\x41\\101\\n'"_s,
            u"a == \"it's \\\"q\\\" \\\\ éAA\\n\""_s);
        row("escape without its digits", u"a == '\\x4z\\u12'"_s, u"a == \"x4zu12\""_s);
        row("surrogate pair", u"a == '\\ud83d\\udccd'"_s, u"a == \"📍\""_s);
        row("escaped names", u"#in == 1 and #process == 2 and size == 3"_s,
            u"#in == 1 AND process == 2 AND #size == 3"_s);
        row("paths", u"SELF.a.@count == {1,2}[FIRST] + {3}[0] + {}[last] + {1}[Size]"_s,
            u"SELF.a.@count == ({1, 2}[FIRST]) + ({3}[0]) + ({}[LAST]) + ({1}[SIZE])"_s);
        row("functions", u"modulus:by: (a, 7) == now ( )"_s, u"modulus:by:(a, 7) == now()"_s);
        row("forms", u"ternary(a==1 or b==2,1,2) == cast ('1',\"NSNumber\")"_s,
            u"TERNARY(a == 1 OR b == 2, 1, 2) == CAST(\"1\", \"NSNumber\")"_s);
        row("quantifiers", u"some {1} == 1 and none {} == 1 and all {nil} == null"_s,
            u"ANY {1} == 1 AND NONE {} == 1 AND ALL {NIL} == NIL"_s);
        row("constants", u"yes == true and falsepredicate"_s, u"TRUE == TRUE AND FALSEPREDICATE"_s);
        row("hyphenated operator", u"a uti-conforms-to 'b'"_s, u"a UTI-CONFORMS-TO \"b\""_s);
        row("minus between words of a hyphenated operator", u"UTI-conforms == 1"_s,
            u"UTI - conforms == 1"_s);
        row("nothing between symbols", u"a==1&&!b==2||{1,2}[0]<=3"_s,
            u"(a == 1 AND NOT b == 2) OR {1, 2}[0] <= 3"_s);
    }

    void canonicalForm()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, printed);
        const auto tree = parse(text.toStdString());
        QVERIFY2(tree, tree ? "" : tree.error().sentence.c_str());
        const Printed once = print(*tree);
        QCOMPARE(QString::fromStdString(once.text), printed);
        const auto again = parse(once.text);
        QVERIFY(again && *again == *tree);
    }

    void argumentsThatTextCannotSay()
    {
        const Arguments arguments = {{std::string("odd name.b")},
                                     {Date{5}},
                                     {Constant::List{{Date{6}}, {std::string("x")}}},
                                     {std::string("self.process")},
                                     {false}};
        const auto tree = parse("%K[0] == %@ AND %@ == %K OR 1 == %d", arguments);
        QVERIFY(tree);
        const Printed printed = print(*tree);
        QCOMPARE(printed.text,
                 std::string("(%K[0] == %@ AND {%@, \"x\"} == SELF.process) OR 1 == FALSE"));
        QCOMPARE(printed.arguments.size(), std::size_t{3});
        const auto again = parse(printed.text, printed.arguments);
        QVERIFY(again && *again == *tree);
    }

    void anyPredicateParsesBack()
    {
        PredicateGenerator generator(1);
        for (int i = 0; i < 3000; ++i) {
            const std::string text = generator.condition(4);
            const auto tree = parse(text);
            QVERIFY2(tree, text.c_str());
            const Printed printed = print(*tree);
            const auto again = parse(printed.text, printed.arguments);
            QVERIFY2(again && *again == *tree, text.c_str());
            QCOMPARE(print(*again).text, printed.text);
        }
    }
};

TESSEL_TEST(TestPrinter)
#include "tst_printer.moc"
