// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "predicate/mistakes.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

Q_DECLARE_METATYPE(predicate::Constant)

class TestParseErrors : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void mistakes_data()
    {
        addMistakeColumns();
        mistake("nothing", u"\t\n "_s, 0, u"The predicate is empty."_s);
        mistake("side missing at the end", u"process =="_s, 10,
                u"Something to compare is missing after ==."_s);
        mistake("side missing before AND", u"x == AND y == 1"_s, 5,
                u"Something to compare is missing before AND."_s);
        mistake("comparison missing after OR", u"(a == 1 OR)"_s, 10,
                u"Something to compare is missing after OR."_s);
        mistake("typographic quotes", u"a == “x”"_s, 5,
                u"“ is not a quotation mark here; type \"."_s);
        mistake("back quote", u"a == `x`"_s, 5, u"` is not a quotation mark here; type '."_s);
        mistake("no-break space", u"a\u00A0== 1"_s, 1,
                u"U+00A0 NO-BREAK SPACE can't be used here; type a blank."_s);
        mistake("letter beyond ASCII", u"é == 1"_s, 0,
                u"“é” can't be used here; texts need quotes."_s);
        mistake("character beyond the basic plane counts twice", u"a == '📍' ; b"_s, 10,
                u"“;” can't be used here."_s);
        mistake("text without end", u"a == \"x\\\""_s, 5, u"This text has no closing \"."_s);
        mistake("misspelt operator", u"process CONTAIN \"a\""_s, 8,
                u"“CONTAIN” is not an operator. Did you mean CONTAINS?"_s);
        mistake("no operator at all", u"process frobnicates 1"_s, 8,
                u"“frobnicates” is not an operator."_s);
        mistake("operator missing at the end", u"process"_s, 7,
                u"An operator such as == is missing after “process”."_s);
        mistake("NOT as part of the operator", u"process NOT IN {\"a\"}"_s, 8,
                u"Put NOT before the comparison: NOT process IN {…}."_s);
        mistake("NOT before another operator", u"process NOT CONTAINS 'a'"_s, 8,
                u"Put NOT before the comparison: NOT process CONTAINS …"_s);
        mistake("the mistake before a strange character", u"process foo 'a' ?"_s, 8,
                u"“foo” is not an operator."_s);
        mistake("the mistake before a text without end", u"a == 1 AND c d b == 'x"_s, 13,
                u"“d” is not an operator."_s);
        mistake("the strange character before the mistake", u"a == ? b"_s, 5,
                u"“?” can't be used here."_s);
        mistake("the last of three quotation marks", u"process == 'it's'"_s, 16,
                u"This text has no closing '."_s);
        mistake("nothing but a strange character", u" ?"_s, 1, u"“?” can't be used here."_s);
        mistake("parenthesis not closed", u"(a == 1"_s, 7, u"A closing parenthesis is missing."_s);
        mistake("parenthesis not opened", u"a == 1)"_s, 6,
                u"This closing parenthesis has no opening one."_s);
        mistake("brace not closed", u"a IN {1, 2"_s, 10, u"A closing brace is missing."_s);
        mistake("bracket not closed", u"{1}[0 == 1"_s, 6, u"A closing bracket is missing."_s);
        mistake("comma missing", u"a IN {\"x\" \"y\"}"_s, 10,
                u"A comma is missing before \"y\"."_s);
        mistake("list in parentheses", u"a IN (\"x\", \"y\")"_s, 9,
                u"A list stands in braces, like {1, 2}."_s);
        mistake("text after the end", u"a == 1 b == 2"_s, 7,
                u"“b” can't follow here; join comparisons with AND or OR."_s);
        mistake("the same inside parentheses", u"(a == 1 b == 2)"_s, 8,
                u"“b” can't follow here; join comparisons with AND or OR."_s);
        mistake("comparisons do not chain", u"1 < 2 < 3"_s, 6,
                u"“<” can't follow here; join comparisons with AND or OR."_s);
        mistake("arithmetic on a condition", u"(a == 1) + 2 == 3"_s, 9,
                u"“+” can't follow here; join comparisons with AND or OR."_s);
        mistake("condition inside an expression", u"1 + (a == 1) == 2"_s, 7,
                u"A closing parenthesis is missing."_s);
        mistake("blank inside ==", u"a = = 1"_s, 4, u"Something to compare is missing before =."_s);
        mistake("number with letters", u"a == 12abc"_s, 5, u"“12abc” is not a number."_s);
        mistake("prefix without digits", u"a == 0x"_s, 5, u"“0x” is not a number."_s);
        mistake("digit of another base", u"a == 0b12"_s, 5, u"“0b12” is not a number."_s);
        mistake("number beyond all reals", u"a == 1e999"_s, 5, u"“1e999” is too large a number."_s);
        mistake("exponent beyond all integers", u"a == 0.01e99999999999999999999"_s, 5,
                u"“0.01e99999999999999999999” is too large a number."_s);
        mistake("many digits", u"a == 1%1e-10"_s.arg(QString(400, u'0')), 5,
                u"“1%1…” is too large a number."_s.arg(QString(39, u'0')));
        mistake("point without digits", u"a == 1."_s, 7, u"A name is missing after “.”."_s);
        mistake("unknown option", u"a ==[ci] 'x'"_s, 5, u"“ci”: the options are c, d, n and l."_s);
        mistake("no option", u"a ==[] 'x'"_s, 5,
                u"An option is missing after [; the options are c, d, n and l."_s);
        mistake("blank between options", u"a ==[c d] 'x'"_s, 7, u"A closing bracket is missing."_s);
        mistake("reserved word as a field", u"IN == 1"_s, 0,
                u"“IN” is a reserved word; write #IN to name a field."_s);
        mistake("reserved word of no use", u"ci == 1"_s, 0,
                u"“ci” is a reserved word; write #ci to name a field."_s);
        mistake("subquery", u"SUBQUERY(x, $x, $x == 1).@count == 1"_s, 0,
                u"SUBQUERY is not supported in log predicates."_s);
        mistake("random", u"random() == 1"_s, 0, u"random() is not supported in log predicates."_s);
        mistake("assignment", u"$x := 5"_s, 3,
                u"Assignments are not supported in log predicates."_s);
        mistake("function without its colon", u"lowercase(a) == 'b'"_s, 9,
                u"The name of a function ends with a colon: lowercase:(…)."_s);
        mistake("colon without a call", u"a: == 1"_s, 1, u"“:” can't be used here."_s);
        mistake("argument missing", u"a == %@"_s, 5,
                u"Insufficient arguments: “%@” has no value to stand for."_s);
        mistake("percent sign twice", u"a == %%"_s, 5,
                u"“%%” can't be used here; the format arguments are %@, %K, %s, %d and %f."_s);
        mistake("percent sign before a pair of surrogates", u"a == %📍"_s, 5,
                u"“%📍” can't be used here; the format arguments are %@, %K, %s, %d and %f."_s);
        mistake("percent sign at the end", u"a == %l"_s, 5,
                u"“%l” can't be used here; the format arguments are %@, %K, %s, %d and %f."_s);
    }

    void mistakes()
    {
        QFETCH(const QString, text);
        compareMistake(parse(text.toStdString()), Stage::Parse);
    }

    void wrongArguments_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Constant>("argument");
        QTest::addColumn<int>("position");
        QTest::newRow("text for a number") << u"1 == %d"_s << Constant{std::string("1")} << 5;
        QTest::newRow("list for a number") << u"1 == %lu"_s << Constant{Constant::List{}} << 5;
        QTest::newRow("number for a text") << u"'' == %s"_s << Constant{1.0} << 6;
        QTest::newRow("number for a field name") << u"%K == 1"_s << Constant{std::int64_t{1}} << 0;
        QTest::newRow("real that is no number")
            << u"1 == %f"_s << Constant{std::numeric_limits<double>::quiet_NaN()} << 5;
        QTest::newRow("infinite real in a list")
            << u"1 IN %@"_s << Constant{Constant::List{{std::numeric_limits<double>::infinity()}}}
            << 5;
        QTest::newRow("wildcard beside an argument")
            << u"'' LIKE *%@*"_s << Constant{std::string("x")} << 8;
    }

    void wrongArguments()
    {
        QFETCH(const QString, text);
        QFETCH(const Constant, argument);
        QFETCH(const int, position);
        const auto tree = parse(text.toStdString(), {argument});
        QVERIFY(!tree);
        QCOMPARE(tree.error().position, static_cast<std::size_t>(position));
    }

    void surplusArgumentsAreIgnored()
    {
        QVERIFY(parse("1 == %ld", {{std::int64_t{1}}, {std::string("unused")}}));
    }
};

TESSEL_TEST(TestParseErrors)
#include "tst_parseerrors.moc"
