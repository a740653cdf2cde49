// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/symbolicvalues.h"
#include "platform/predicate/predicate.h"
#include "support/predicatecases.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

namespace {

constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t moment =
    1'709'816'709 * second + 31'250'001; // 2024-03-07 13:05:09.031250001 UTC

MadeUpEntry sample()
{
    MadeUpEntry entry(EntryKind::Other);
    entry.set(Field::ComposedMessage, Value::text("line one\nline two 📍"));
    entry.set(Field::Process, Value::text("backupd"));
    entry.set(Field::ProcessIdentifier, Value::integer(312));
    entry.set(Field::Subsystem, Value::text("com.example"));
    entry.set(Field::Category, Value::text(""));
    entry.set(Field::Date, Value::date(moment));
    entry.set(Field::LogType, Value::integer(16));
    entry.set(Field::Level, Value::integer(4));
    entry.set(Field::Type, Value::integer(eventtype::log));
    entry.set(Field::SignpostType, Value::integer(1));
    entry.set(Field::SignpostScope, Value::integer(2));
    entry.set(Field::Size, Value::integer(16));
    entry.set(Field::ActivityIdentifier, Value::integer(0));
    entry.set(Field::BootUuid, Value::uuid({0x2F, 0x0D, 0x6A, 0x44, 0x7C, 0x1E, 0x4A, 0x57, 0x9D,
                                            0x0A, 0x5B, 0x3F, 0x0C, 0x8E, 0x1A, 0x11}));
    entry.set(Field::ProcessImageUuid, Value::uuid({}));
    return entry;
}

} // namespace

/// What the predicates are for one entry, which carries all fields.
class TestEvaluation : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void outcomes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        const auto holds = [](const char* name, const QString& text) {
            QTest::newRow(name) << text << true;
        };
        const auto fails = [](const char* name, const QString& text) {
            QTest::newRow(name) << text << false;
        };

        holds("empty text field is nil", u"category == nil AND category != ''"_s);
        holds("UUID of zeros is nil", u"processImageUUID == nil"_s);
        holds(
            "UUID in either case",
            u"bootUUID == '2f0d6a44-7c1e-4a57-9d0a-5b3f0c8e1a11' AND bootUUID BEGINSWITH '2f0d'"_s);
        holds("UUID in a list of any case",
              u"bootUUID IN {'x', '2f0d6a44-7C1E-4a57-9d0a-5b3f0c8e1a11'}"_s);
        holds(
            "only UUIDs ignore case",
            u"NOT process IN {'BACKUPD', bootUUID} AND NOT {'BACKUPD', bootUUID} CONTAINS process AND NOT ANY {'BACKUPD', bootUUID} == process"_s);
        holds(
            "a UUID among texts ignores case",
            u"'2f0d6a44-7c1e-4a57-9d0a-5b3f0c8e1a11' IN {process, bootUUID} AND 'backupd' IN {process, bootUUID}"_s);
        holds("identifier 0 is not nil",
              u"activityIdentifier != nil AND activityIdentifier == 0"_s);
        fails("nil in a list", u"category IN {nil}"_s);
        fails("list with nil contains nil", u"{nil} CONTAINS category"_s);
        fails("nil between nil", u"category BETWEEN {nil, nil}"_s);
        holds(
            "nil or greater",
            u"category <= nil AND category >= nil AND NOT category < 'a' AND NOT category >= 'a'"_s);
        fails("nil has every text neither",
              u"category CONTAINS '' OR category LIKE '*' OR nil IN process"_s);
        holds(
            "empty text stands in no text",
            u"NOT (process CONTAINS '' OR '' CONTAINS[c] '' OR '' BEGINSWITH '' OR '' ENDSWITH[d] '' OR '' IN process)"_s);
        holds("empty text of a field stands in no text",
              u"NOT process CONTAINS TERNARY(process == 'backupd', '', 'x')"_s);
        holds("empty patterns match the empty text",
              u"'' LIKE '' AND '' MATCHES '' AND '' LIKE '*' AND NOT process LIKE ''"_s);

        holds("stars match line breaks", u"eventMessage LIKE 'line*two*'"_s);
        holds("question mark is one character", u"eventMessage LIKE '*two ?'"_s);
        holds("stars and question marks mixed",
              u"process LIKE '?ack*p?' AND NOT process LIKE '?*backupd'"_s);
        holds("pieces do not overlap", u"NOT 'aba' LIKE 'ab*ba' AND 'abba' LIKE 'ab*ba'"_s);
        holds("last piece is taken from the end", u"'a.b.b' LIKE 'a*.b'"_s);
        holds("backslash makes plain",
              u"'a*b?c\\\\' LIKE 'a\\\\*b\\\\?c\\\\\\\\' AND NOT 'axb?c' LIKE 'a\\\\*b?c'"_s);
        holds("backslash at the end of a pattern", u"'a\\\\' LIKE 'a\\\\'"_s);
        holds("wildcards under options", u"'Ångström' LIKE[cd] 'a*STR?M'"_s);
        holds("dot matches line breaks", u"eventMessage MATCHES 'line.*'"_s);
        fails("unless told otherwise", u"eventMessage MATCHES '(?-s)line.*'"_s);
        holds(
            "lines have ends, yet the whole text must match",
            u"eventMessage MATCHES '^line one$\\\\s^line .*$' AND NOT eventMessage MATCHES '^line one$'"_s);
        holds("marks go from text and pattern", u"'Éa' MATCHES[cd] 'e[á]'"_s);
        fails("pattern of a field that is none",
              u"process MATCHES TERNARY(process == 'x', 'a', '(')"_s);
        holds("pattern of a field", u"process MATCHES process"_s);

        holds("composed and decomposed differ",
              u"'\\u00e9' != 'e\\u0301' AND '\\u00e9' ==[d] 'e\\u0301'"_s);
        holds("sharp s is not ss", u"'ß' !=[c] 'ss' AND '\\u1e9e' ==[c] 'ß'"_s);
        holds("letters that do not decompose stay", u"'ø' !=[d] 'o' AND 'ł' !=[cd] 'L'"_s);
        holds("n switches c and d off", u"'A' !=[cn] 'a' AND NOT 'é' CONTAINS[nd] 'e'"_s);
        holds("l does nothing", u"'a' ==[l] 'a' AND 'A' !=[l] 'a'"_s);
        holds("order by UTF-16 unit", u"'Z' < 'a' AND '\\ufb01' > '📍' AND '\\ud7ff' < '📍'"_s);
        holds("order of folded texts", u"'B' >[c] 'a' AND 'é' <[d] 'f'"_s);
        holds("prefixes come first", u"'a' < 'ab' AND '' < 'a'"_s);

        holds("quantifiers over an empty list",
              u"ALL {} == 1 AND NONE {} == 1 AND NOT ANY {} == 1"_s);
        holds("quantified substring",
              u"ANY {'x', 'two'} IN eventMessage AND NOT ALL {'x', 'two'} IN eventMessage"_s);
        holds("quantified inequality", u"ANY {1, 2} != 1 AND NOT ALL {1, 2} != 1"_s);
        holds("quantified list of unknown elements",
              u"ANY TERNARY(process == 'backupd', {1, 2}, {3}) == 2"_s);
        holds("text in text",
              u"'up' IN process AND process IN 'the backupd' AND NOT process IN 'backup'"_s);
        holds(
            "lists",
            u"{1, {2}} == {1.0, {2}} AND {1} != {1, 2} AND {} == {} AND {'A'} ==[c] {'a'} AND {1} != 1"_s);
        holds("list in a list", u"{1} IN {{1}, {2}}"_s);
        holds(
            "elements",
            u"{1,2,3}[2] == 3 AND {1}[1] == nil AND {1}[-1] == nil AND {}[FIRST] == nil AND {1,2}[LAST] == 2 AND {1,2}[SIZE] == 2"_s);
        holds("count and length",
              u"{nil, 1}.@count == 2 AND eventMessage.length == 20 AND category.length == nil"_s);
        holds("entry", u"SELF != nil AND NOT SELF == nil AND SELF.process == #process"_s);

        holds("cast of a date is exact", u"CAST(CAST(date, 'NSNumber'), 'NSDate') == date"_s);
        holds("arithmetic on dates is exact",
              u"CAST(CAST(date, 'NSNumber') + 1 - 1, 'NSDate') == date"_s);
        holds("whole seconds are an integer",
              u"CAST(CAST('2001-01-01 00:01Z', 'NSDate'), 'NSNumber') == 60"_s);
        holds("seconds before the reference date",
              u"CAST(-0.5, 'NSDate') == '2000-12-31 23:59:59.5Z'"_s);
        holds(
            "number of a text",
            u"CAST('-0x10', 'NSNumber') == -16 AND CAST('1e2', 'NSNumber') == 100 AND CAST('12x', 'NSNumber') == nil AND CAST('', 'NSNumber') == nil"_s);
        holds("text of a number",
              u"CAST(processID, 'NSString') == '312' AND CAST(1.5, 'NSString') == '1.5'"_s);
        holds("text of a date's number",
              u"CAST(CAST(date, 'NSNumber'), 'NSString') == '731509509.031250001'"_s);
        holds("cast of nil", u"CAST(category, 'NSNumber') == nil AND CAST(nil, 'NSDate') == nil"_s);
        holds(
            "choice",
            u"TERNARY(process == 'backupd', 'yes', 1) == 'yes' AND TERNARY(process == 'x', 'yes', 1) == 1"_s);

        holds(
            "date texts",
            u"date > '2024-03-07' AND date < '2024-03-08' AND date == '2024-03-07T13:05:09.031250001Z'"_s);
        holds("date with a zone",
              u"date > '2024-03-07 14:05:09+01:00' AND date < '2024-03-07 08:05:10-0500'"_s);
        holds(
            "dates among bounds and in lists",
            u"date BETWEEN {'2024-03-07', '2024-03-08'} AND '2024-03-07' IN {CAST('2024-03-07', 'NSDate')} AND ANY {'2025-01-01'} > date"_s);
        holds("dates beyond the count", u"date > '0001-01-01' AND date < '9999-12-31'"_s);
        holds("leap day", u"CAST('2024-02-29', 'NSDate') < '2024-03-01'"_s);
        holds("now", u"now() == '2024-03-07 13:06' AND date < now()"_s);

        holds(
            "text functions",
            u"lowercase:('ÀB') == 'àb' AND uppercase:('ß') == 'SS' AND lowercase:(category) == nil"_s);
        holds(
            "number functions",
            u"abs:(-3) == 3 AND floor:(-1.5) == -2 AND ceiling:(1.2) == 2 AND trunc:(-1.7) == -1 AND sqrt:(9) == 3 AND sqrt:(-1) == nil"_s);
        holds(
            "functions of two numbers",
            u"from:subtract:(5, 2) == 3 AND add:to:(1, 2) == 3 AND divide:by:(7, 2) == 3 AND modulus:by:(-7, 3) == -1 AND raise:toPower:(2, 10) == 1024 AND modulus:by:(1, 0) == nil"_s);
        holds(
            "bits",
            u"bitwiseAnd:with:(12, 10) == 8 AND bitwiseOr:with:(12, 10) == 14 AND bitwiseXor:with:(12, 10) == 6 AND bitwiseAnd:with:(-1, 18446744073709551615) == 18446744073709551615"_s);
        holds(
            "aggregates",
            u"sum:(1, 2.5, nil) == 3.5 AND count:({1, nil}) == 1 AND min:({3, 1.5}) == 1.5 AND max:(1, processID) == 312 AND average:({1, 2}) == 1.5"_s);
        holds(
            "aggregates of nothing",
            u"sum:({}) == 0 AND count:({}) == 0 AND max:({}) == nil AND average:({nil}) == nil"_s);

        holds(
            "bare, quoted, as a number",
            u"messageType == error AND messageType == 'ERROR' AND messageType == 16 AND messageType == 0x10"_s);
        holds(
            "on the left",
            u"error == messageType AND {error, fault} CONTAINS messageType AND ANY {info, error} == messageType"_s);
        holds(
            "among bounds",
            u"messageType BETWEEN {debug, 'fault'} AND NOT messageType BETWEEN {default, debug}"_s);
        holds("synonyms of default",
              u"messageType > default AND messageType > release AND messageType > notice"_s);
        holds(
            "levels have other numbers",
            u"level == 4 AND level == error AND level > notice AND level > default AND level < fault"_s);
        holds("escaped and of the entry",
              u"SELF.messageType == #error AND #messageType != fault"_s);
        holds("name before field", u"signpostScope == process AND signpostScope == 2"_s);
        holds("field when no name", u"messageType != processID AND messageType == size"_s);
        holds("type by its own names",
              u"type == logEvent AND type == 1024 AND type != lossEvent"_s);
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
        holds("symbolic value and nil", u"messageType != nil AND nil != messageType"_s);

        holds("integers divide as integers",
              u"7/2 == 3 AND -7/2 == -3 AND 7/2.0 == 3.5 AND 1/2 == 0"_s);
        holds("division by zero", u"1/0 == nil AND 1/0.0 == nil AND NOT 1/0 > 0"_s);
        holds(
            "overflow",
            u"18446744073709551615 + 1 == nil AND -9223372036854775808 - 1 == nil AND 2 ** 64 == nil AND 1e300 * 1e300 == nil"_s);
        holds("overflow of a product", u"18446744073709551615 * 18446744073709551615 == nil"_s);
        holds(
            "no overflow between the types",
            u"9223372036854775807 + 1 == 9223372036854775808 AND 18446744073709551615 - 1 == 18446744073709551614"_s);
        holds("lowest by minus one", u"-9223372036854775808 / -1 == 9223372036854775808"_s);
        holds(
            "powers",
            u"2 ** 63 == 9223372036854775808 AND (-2) ** 63 == -9223372036854775808 AND 0 ** 0 == 1 AND 2 ** -1 == 0.5 AND 0 ** -1 == nil"_s);
        holds(
            "huge exponents",
            u"1 ** 18446744073709551615 == 1 AND (-1) ** 18446744073709551615 == -1 AND 0 ** 9 == 0 AND 3 ** 1000000 == nil"_s);
        holds("power beyond any product", u"18446744073709551615 ** 2 == nil"_s);
        holds("left association", u"10 - 3 - 2 == 5 AND 64 / 4 / 2 == 8 AND 2 ** 3 ** 2 == 64"_s);
        holds("minus before power", u"-2 ** 2 == 4 AND - - 3 == 3 AND -(1 + 2) == -3"_s);
        holds("nil in arithmetic", u"1 + nil == nil AND -nil == nil AND nil ** 2 == nil"_s);
        holds("truth values are numbers",
              u"YES + YES == 2 AND TRUE == 1 AND NO == 0.0 AND -YES == -1"_s);
        holds(
            "literal beyond the integers is real",
            u"18446744073709551616 == 18446744073709551616.0 AND 18446744073709551617 == 18446744073709551616"_s);
        holds(
            "bases",
            u"0XfF == 255 AND 0O17 == 15 AND 0B101 == 5 AND 007 == 7 AND .5 == 0.5 AND 1e3 == 1000 AND 25E-1 == 2.5"_s);
        holds("not through a real",
              u"9007199254740993 != 9007199254740992 AND 9007199254740993 != 9007199254740992.0"_s);
        const QString zeros(400, u'0');
        holds("too small to be told from 0", u"1e-400 == 0 AND 1e-99999999999999999999 == 0"_s);
        holds("first digit far behind the point", u"0."_s + zeros + u"1 == 0"_s);
        holds("digits and exponent cancel out", u"1"_s + zeros + u"e-400 == 1"_s);
        holds("zeros and exponent cancel out", u"0."_s + zeros + u"1e401 == 1"_s);
    }

    void outcomes()
    {
        QFETCH(const QString, text);
        QFETCH(const bool, expected);
        const auto built = build(text.toStdString(), {}, {1'709'816'760 * second, {}});
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
        QCOMPARE(Matcher(*built).matches(sample()), expected);
    }

    void datesWithoutZoneAreTheUsers()
    {
        std::int64_t askedFor = 0;
        const auto fiveHoursBehind = [&](std::int64_t local) {
            askedFor = local;
            return std::int64_t{-5 * 3600};
        };
        const auto built =
            build("date == '2024-03-07 08:05:09.031250001' AND date > '2024-03-07 13:05:09Z'", {},
                  {0, fiveHoursBehind});
        QVERIFY(built);
        QVERIFY(Matcher(*built).matches(sample()));
        QCOMPARE(askedFor, 1'709'816'709 - 5 * 3600);
    }
};

TESSEL_TEST(TestEvaluation)
#include "tst_evaluation.moc"
