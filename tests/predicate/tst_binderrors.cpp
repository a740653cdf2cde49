// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "predicate/mistakes.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

class TestBindErrors : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void mistakes_data()
    {
        addMistakeColumns();
        mistake("field in another case", u"Process == 'a'"_s, 0,
                u"There is no field “Process”. Did you mean process?"_s);
        mistake("field with two letters swapped", u"susbystem == 'a'"_s, 0,
                u"There is no field “susbystem”. Did you mean subsystem?"_s);
        mistake("field of the shorthand", u"p == 'a'"_s, 0,
                u"There is no field “p”. Did you mean process?"_s);
        mistake("field like no other", u"nosuch == 1"_s, 0, u"There is no field “nosuch”."_s);
        mistake("text without quotes", u"process == Finder"_s, 11,
                u"There is no field “Finder”. A text needs quotes: \"Finder\"."_s);
        mistake("text with dots and a hyphen without quotes", u"subsystem == com.apple.x-y"_s, 13,
                u"There is no field “com”. A text needs quotes: \"com.apple.x-y\"."_s);
        mistake("texts in a list without quotes", u"process IN {'a', com.apple}"_s, 17,
                u"There is no field “com”. A text needs quotes: \"com.apple\"."_s);
        mistake("message type as an event type", u"eventType == \"error\""_s, 13,
                u"“error” is not an event type. Did you mean messageType?"_s);
        mistake("event type as a message type", u"messageType IN {error, logEvent}"_s, 23,
                u"“logEvent” is not a message type. Did you mean eventType?"_s);
        mistake("field of SELF", u"SELF.nosuch == 1"_s, 5, u"There is no field “nosuch”."_s);
        mistake("variable", u"process == $name"_s, 11, u"“$name” has no value."_s);
        mistake("text operator on a number", u"processID CONTAINS '1'"_s, 10,
                u"CONTAINS needs a text; processID is a number."_s);
        mistake("number beside a text operator", u"process LIKE 1"_s, 8,
                u"LIKE needs a text on its right; 1 is a number."_s);
        mistake("operator before the mistake on its right", u"processID CONTAINS nosuch"_s, 10,
                u"CONTAINS needs a text; processID is a number."_s);
        mistake("text operator on a symbolic field", u"messageType CONTAINS 'err'"_s, 12,
                u"CONTAINS needs a text; messageType is a message type."_s);
        mistake(
            "no order", u"process < 5"_s, 8,
            u"< needs two numbers, two texts or two dates; process is a text and 5 is a number."_s);
        mistake("order of lists", u"{1} < {2}"_s, 4,
                u"< needs a number, a text or a date; {1} is a list."_s);
        mistake("IN a number", u"process IN 5"_s, 8,
                u"IN needs a list or a text on its right; 5 is a number."_s);
        mistake("number IN a text", u"5 IN process"_s, 2,
                u"IN needs a list on its right, or texts on both sides; 5 is a number."_s);
        mistake("one bound", u"processID BETWEEN {1}"_s, 18,
                u"BETWEEN needs two values in braces."_s);
        mistake("bounds of another type", u"processID BETWEEN {1, 'a'}"_s, 10,
                u"BETWEEN needs two bounds like what stands on its left; processID is a number."_s);
        mistake("quantified field", u"ANY process == 'x'"_s, 4,
                u"ANY needs a list on its left; process is a text."_s);
        mistake("quantified field by the other word", u"some process == 'x'"_s, 5,
                u"SOME needs a list on its left; process is a text."_s);
        mistake("one element does not fit", u"ALL {1, 'a'} CONTAINS 'a'"_s, 13,
                u"CONTAINS needs a text; not every element of {1, 'a'} is one."_s);
        mistake(
            "unknown message type", u"messageType == warning"_s, 15,
            u"“warning” is not a message type. It can be default, info, debug, error or fault."_s);
        mistake("unknown signpost scope in a list", u"signpostScope IN {process, 'proc'}"_s, 27,
                u"“proc” is not a signpost scope. It can be thread, process or system."_s);
        mistake(
            "message type in a text", u"messageType IN 'error'"_s, 12,
            u"IN needs a list on its right, or texts on both sides; messageType is a message type."_s);
        mistake("text that holds a message type", u"'x' CONTAINS messageType"_s, 4,
                u"CONTAINS needs a text on its right; messageType is a message type."_s);
        mistake(
            "unknown message type beside a list of fields", u"{messageType} == {warning}"_s, 18,
            u"“warning” is not a message type. It can be default, info, debug, error or fault."_s);
        mistake("name beside fields of several types", u"{messageType, level} == {error, error}"_s,
                25, u"There is no field “error”."_s);
        mistake(
            "bad expression", u"process MATCHES '('"_s, 16,
            u"This regular expression is not valid: a parenthesis is not closed or not opened (U_REGEX_MISMATCHED_PAREN), at character 1."_s);
        mistake("bad date", u"date > 'yesterday'"_s, 7,
                u"“yesterday” is not a date; write 2024-03-07 14:05."_s);
        mistake("bad date among bounds", u"date BETWEEN {'2024-01-01', '2024-13-01'}"_s, 28,
                u"“2024-13-01” is not a date; write 2024-03-07 14:05."_s);
        mistake("date in a text", u"date IN 'x'"_s, 5,
                u"IN needs a list on its right, or texts on both sides; date is a date."_s);
        mistake("unknown function", u"lowercas:(process) == 'a'"_s, 0,
                u"There is no function “lowercas:”. Did you mean lowercase:?"_s);
        mistake("number of arguments", u"1 == modulus:by:(1)"_s, 5,
                u"“modulus:by:” takes two arguments."_s);
        mistake("type of an argument", u"lowercase:(5) == 'a'"_s, 0,
                u"“lowercase:” needs a text; 5 is a number."_s);
        mistake("bits of a real", u"bitwiseAnd:with:(1.5, 1) == 1"_s, 0,
                u"“bitwiseAnd:with:” needs a whole number; 1.5 is a number."_s);
        mistake("sum of texts", u"sum:({'a'}) == 1"_s, 0, u"“sum:” needs numbers."_s);
        mistake("sum of one number", u"sum:(5) == 5"_s, 0,
                u"“sum:” needs a list or several arguments."_s);
        mistake("unknown cast", u"CAST(1, 'NSFoo') == 1"_s, 8,
                u"“NSFoo” is not a type here; it can be NSDate, NSNumber or NSString."_s);
        mistake("cast of a date to a text", u"'' == CAST(now(), 'NSString')"_s, 6,
                u"now() is a date, which CAST can't make a text."_s);
        mistake("cast of a text that is no date", u"CAST('x', 'NSDate') > now()"_s, 5,
                u"“x” is not a date; write 2024-03-07 14:05."_s);
        mistake("arithmetic on a text", u"1 + process == 2"_s, 0,
                u"+ needs numbers; process is a text."_s);
        mistake("member of a text", u"process.name == 'x'"_s, 0,
                u"“process” has no member “name”."_s);
        mistake("element of a number", u"processID[0] == 1"_s, 0,
                u"Only a list has elements; processID is a number."_s);
        mistake("place that is no number", u"{1}['a'] == 1"_s, 4,
                u"The place in a list is a whole number; 'a' is a text."_s);
        mistake("entry as a value", u"SELF == 1"_s, 5, u"SELF can only be compared with nil."_s);
        mistake("entry in order", u"SELF > nil"_s, 5, u"SELF can only be compared with nil."_s);
        mistake("member of a field of SELF", u"SELF.process.name == 'x'"_s, 0,
                u"“process” has no member “name”."_s);
        mistake("entry counted", u"count:(SELF, 1) == 2"_s, 0,
                u"SELF can only be compared with nil."_s);
        mistake("entry in a list", u"1 IN {SELF}"_s, 6, u"SELF can only be compared with nil."_s);
        mistake("content types", u"process UTI-EQUALS 'a'"_s, 8,
                u"UTI-EQUALS is not supported in log predicates."_s);
        mistake("count alone", u"@count == 0"_s, 0, u"There is no field “@count”."_s);
        mistake("the first of two mistakes", u"processID == 1 AND a == 1 AND b == 2"_s, 19,
                u"There is no field “a”."_s);
    }

    void mistakes()
    {
        QFETCH(const QString, text);
        compareMistake(build(text.toStdString()), Stage::Bind);
    }

    void argumentsAreNamedByTheirValue()
    {
        const auto built = build("messageType == %@", {{std::string("warning")}});
        QVERIFY(!built);
        QCOMPARE(built.error().position, std::size_t{15});
        QVERIFY(QString::fromStdString(built.error().sentence)
                    .startsWith(u"“warning” is not a message type."_s));
    }

    void fits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nil beside anything")
            << u"process CONTAINS nil OR nil < process OR nil IN nil"_s;
        QTest::newRow("unequal types") << u"process == 1 AND date != 1 OR {1} == 2"_s;
        QTest::newRow("two symbolic fields") << u"messageType == level"_s;
        QTest::newRow("field beside a symbolic one") << u"messageType == size"_s;
        QTest::newRow("arithmetic on symbolic values") << u"messageType + 1 == 2"_s;
        QTest::newRow("value of one of two types") << u"TERNARY(process == 'a', 1, 'b') > 5"_s;
        QTest::newRow("bounds that are nil") << u"processID BETWEEN {nil, 5}"_s;
        QTest::newRow("entry and nil") << u"SELF != nil AND nil != SELF"_s;
        QTest::newRow("names of message types for type")
            << u"type IN {error, 17} AND type >= 'Info'"_s;
        QTest::newRow("element of lists in lists") << u"{{1}, {'a'}}[processID][0] == 'a'"_s;
    }

    void fits()
    {
        QFETCH(const QString, text);
        const auto built = build(text.toStdString());
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
    }
};

TESSEL_TEST(TestBindErrors)
#include "tst_binderrors.moc"
