// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"
#include "support/predicatecases.h"
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
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("inside");
        QTest::addColumn<QByteArray>("behind");
        QTest::newRow("parentheses around a condition") << "("_ba
                                                        << "1 == 1"_ba
                                                        << ")"_ba;
        QTest::newRow("NOT") << "NOT "_ba
                             << "1 == 2"_ba
                             << ""_ba;
        QTest::newRow("braces") << "{"_ba
                                << "1"_ba
                                << "}"_ba;
        QTest::newRow("unary minus") << "-"_ba
                                     << "1 == 1"_ba
                                     << ""_ba;
        QTest::newRow("calls") << "abs:("_ba
                               << "1"_ba
                               << ")"_ba;
        QTest::newRow("brackets") << "{1}["_ba
                                  << "0"_ba
                                  << "]"_ba;
    }

    void depth()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, inside);
        QFETCH(const QByteArray, behind);
        const auto nested = [&](int levels) {
            const bool expression = !inside.contains('=');
            std::string text = repeated(before.toStdString(), levels) + inside.toStdString();
            text += repeated(behind.toStdString(), levels);
            return expression ? text + " != 7" : text;
        };
        const auto fits = build(nested(200));
        QVERIFY2(fits, fits ? "" : fits.error().sentence.c_str());
        Matcher(*fits).matches(MadeUpEntry());
        const auto tooDeep = parse(nested(201));
        QVERIFY(!tooDeep);
        QCOMPARE(tooDeep.error().sentence, std::string("The predicate is nested too deeply."));
    }

    void tooDeepIsNotTriedAgain()
    {
        const auto tree = parse(repeated("(", 100'000));
        QVERIFY(!tree);
        QCOMPARE(tree.error().position, std::size_t{200});
        const auto mixed = parse(repeated("(1+(-", 10'000));
        QVERIFY(!mixed);
        QCOMPARE(mixed.error().sentence, std::string("The predicate is nested too deeply."));
    }

    void length_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("piece");
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("AND") << "1 == 1"_ba
                             << " AND processID == nil"_ba
                             << ""_ba;
        QTest::newRow("OR") << "eventMessage == 'm'"_ba
                            << " || processID == 5"_ba
                            << ""_ba;
        QTest::newRow("sum") << "1"_ba
                             << " + 1 - 1"_ba
                             << " == 1"_ba;
        QTest::newRow("power") << "1"_ba
                               << " ** 1"_ba
                               << " == 1"_ba;
        QTest::newRow("list") << "'m' IN {eventMessage"_ba
                              << ", 'x'"_ba
                              << "}"_ba;
        QTest::newRow("list of constants") << "eventMessage IN {'m'"_ba
                                           << ", 'x'"_ba
                                           << "}"_ba;
        QTest::newRow("quantified list") << "ANY {'m'"_ba
                                         << ", 'x'"_ba
                                         << "} == eventMessage"_ba;
        QTest::newRow("long list beside a long text")
            << "NONE {process"_ba
            << ", process"_ba
            << "} CONTAINS '"_ba + QByteArray(100'000, 'x') + "'";
        QTest::newRow("arguments") << "max:(1"_ba
                                   << ", 0"_ba
                                   << ") == 1"_ba;
        QTest::newRow("blanks") << "1 == 1"_ba
                                << "  \n"_ba
                                << ""_ba;
        QTest::newRow("text") << "'m"_ba
                              << "mmm"_ba
                              << "' CONTAINS eventMessage"_ba;
        QTest::newRow("elements of elements") << "{{1}}[processID]"_ba
                                              << "[0]"_ba
                                              << " == nil"_ba;
        QTest::newRow("product") << "0"_ba
                                 << " * size / 1"_ba
                                 << " == nil"_ba;
        QTest::newRow("closed parentheses") << "1 == 1"_ba
                                            << " AND (1 == 1)"_ba
                                            << ""_ba;
    }

    void length()
    {
        QFETCH(const QByteArray, start);
        QFETCH(const QByteArray, piece);
        QFETCH(const QByteArray, end);
        constexpr int count = 50'000; // more than the stack holds if each took a call
        const auto built =
            build(start.toStdString() + repeated(piece.toStdString(), count) + end.toStdString());
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
