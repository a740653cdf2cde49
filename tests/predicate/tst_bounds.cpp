// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "support/madeupentry.h"
#include "support/testcase.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace predicate;

namespace {

std::string repeated(const std::string& text, int count)
{
    std::string out;
    for (int i = 0; i < count; ++i)
        out += text;
    return out;
}

MadeUpEntry withMessage(const std::string& message)
{
    MadeUpEntry entry;
    entry.set(Field::ComposedMessage, Value::text(message));
    return entry;
}

} // namespace

/// Nothing that can be typed takes more than a bounded time and depth.
class TestBounds : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void depth_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("inside");
        QTest::addColumn<QString>("end");
        QTest::newRow("parentheses") << u"("_s << u"1 == 1"_s << u")"_s;
        QTest::newRow("NOT") << u"NOT "_s << u"1 == 2"_s << u""_s;
        QTest::newRow("braces") << u"{"_s << u"1"_s << u"}"_s;
        QTest::newRow("unary minus") << u"-"_s << u"1 == 1"_s << u""_s;
        QTest::newRow("calls") << u"abs:("_s << u"1"_s << u")"_s;
        QTest::newRow("brackets") << u"{1}["_s << u"0"_s << u"]"_s;
    }

    void depth()
    {
        QFETCH(const QString, start);
        QFETCH(const QString, inside);
        QFETCH(const QString, end);
        const auto nested = [&](int levels) {
            const QString text = start.repeated(levels) + inside + end.repeated(levels);
            return (inside.contains(u'=') ? text : text + u" != 7"_s).toStdString();
        };
        const auto fits = build(nested(200));
        QVERIFY2(fits, fits ? "" : fits.error().sentence.c_str());
        Matcher(*fits).matches(MadeUpEntry());
        // Far too deep is no slower than just too deep: nothing is tried again.
        for (const int levels : {201, 100'000}) {
            const auto tooDeep = parse(nested(levels));
            QVERIFY(!tooDeep);
            QCOMPARE(tooDeep.error().sentence, std::string("The predicate is nested too deeply."));
        }
    }

    void length_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("piece");
        QTest::addColumn<QString>("end");
        const auto row = [](const QString& start, const QString& piece, const QString& end) {
            QTest::newRow(qPrintable(start + piece)) << start << piece << end;
        };
        row(u"1 == 1"_s, u" AND processID == nil"_s, u""_s);
        row(u"eventMessage == 'm'"_s, u" || processID == 5"_s, u""_s);
        row(u"1 == 1"_s, u" AND (1 == 1)"_s, u""_s);
        row(u"1"_s, u" + 1 - 1"_s, u" == 1"_s);
        row(u"1"_s, u" ** 1"_s, u" == 1"_s);
        row(u"0"_s, u" * size / 1"_s, u" == nil"_s);
        row(u"'m' IN {eventMessage"_s, u", 'x'"_s, u"}"_s);
        row(u"eventMessage IN {'m'"_s, u", 'x'"_s, u"}"_s);
        row(u"ANY {'m'"_s, u", 'x'"_s, u"} == eventMessage"_s);
        row(u"NONE {process"_s, u", process"_s,
            u"} CONTAINS '"_s + QString(100'000, u'x') + u"'"_s);
        row(u"max:(1"_s, u", 0"_s, u") == 1"_s);
        row(u"1 == 1"_s, u"  \n"_s, u""_s);
        row(u"'m"_s, u"mmm"_s, u"' CONTAINS eventMessage"_s);
        row(u"{{1}}[processID]"_s, u"[0]"_s, u" == nil"_s);
        row(u"eventMessage MATCHES 'm"_s, u"|x"_s, u"'"_s);
    }

    void length()
    {
        QFETCH(const QString, start);
        QFETCH(const QString, piece);
        QFETCH(const QString, end);
        constexpr int count = 50'000; // more than the stack holds if each took a call
        const auto built = build((start + piece.repeated(count) + end).toStdString());
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
        QVERIFY(Matcher(*built).matches(withMessage("m")));
    }

    void catastrophicPatterns_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::newRow("nested repetition") << u"(a+)+b"_s;
        QTest::newRow("alternatives that overlap") << u"(a|aa|a*)*b"_s;
        QTest::newRow("groups referred to") << u"(a*)*(\\1\\1)*b"_s;
        QTest::newRow("deep stack") << u"((a|b)*c?)*d"_s;
    }

    void catastrophicPatterns()
    {
        QFETCH(const QString, pattern);
        const auto built = build("eventMessage MATCHES %@", {{pattern.toStdString()}});
        QVERIFY2(built, built ? "" : built.error().sentence.c_str());
        Matcher matcher(*built);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!matcher.matches(withMessage(repeated("a", 20'000))));
        QVERIFY2(clock.elapsed() < 20'000, "the match took far longer than its limit allows");
        // A match that gave up leaves the pattern usable.
        QVERIFY(matcher.matches(withMessage("a" + pattern.right(1).toStdString())));
    }

    void patternsThatKeepRunningOutOfTimeGetLess_data()
    {
        QTest::addColumn<QByteArray>("predicate");
        QTest::newRow("constant pattern") << "eventMessage MATCHES '(a+)+b|a+c'"_ba;
        QTest::newRow("pattern of a field") << "eventMessage MATCHES formatString"_ba;
    }

    void patternsThatKeepRunningOutOfTimeGetLess()
    {
        QFETCH(const QByteArray, predicate);
        const auto built = build(predicate.toStdString());
        QVERIFY(built);
        Matcher matcher(*built);
        const auto matches = [&](const std::string& message, const char* pattern) {
            MadeUpEntry entry = withMessage(message);
            entry.set(Field::FormatString, Value::text(pattern));
            return matcher.matches(entry);
        };
        // Every 'a' doubles the ways that are tried before the other branch is.
        const std::string costly = repeated("a", 16) + "c";
        const std::string hopeless = repeated("a", 60);
        for (int i = 0; i < 20; ++i) {
            QVERIFY(matches(costly, "(a+)+b|a+c"));
            QVERIFY(!matches(hopeless, i % 2 == 0 ? "(a+)+b|a+c" : "(a+)+d|a+c"));
        }
        QVERIFY(!matches(costly, "(a+)+b|a+c"));
        QVERIFY(matches("aab", "(a+)+b|a+c"));
    }
};

TESSEL_TEST(TestBounds)
#include "tst_bounds.moc"
