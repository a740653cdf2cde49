// SPDX-License-Identifier: MIT
#include "model/textcache.h"
#include "support/testcase.h"

#include <QTest>

#include <limits>
#include <memory>
#include <string>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

class TestText : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void keepsEveryCharacter()
    {
        const QString text = u"tab\t, zero "_s + QChar(u'\0') + u", déjà, \U0001F4DD, \u2028"_s;
        QCOMPARE(Text(text).toString(), text);
        QCOMPARE(Text("d\xC3\xA9j\xC3\xA0"sv).toString(), u"déjà"_s);
    }

    void isEmptyOrNot()
    {
        QVERIFY(Text().isEmpty());
        QVERIFY(Text(QString()).isEmpty());
        QVERIFY(Text(std::string_view()).isEmpty());
        QVERIFY(Text().utf8().empty());
        QVERIFY(!Text(u" "_s).isEmpty());
    }

    void copiesShareAndOutliveTheOriginal()
    {
        auto original = std::make_unique<Text>(u"a text"_s);
        const Text copy = *original;
        Text moved = std::move(*original);
        QVERIFY(copy.utf8().data() == moved.utf8().data());
        original.reset();
        moved = Text();
        QCOMPARE(copy.toString(), u"a text"_s);
    }

    void assignsToItself()
    {
        Text text(u"a text"_s);
        const Text& same = text;
        text = same;
        QCOMPARE(text.toString(), u"a text"_s);
    }

    void comparesByContent()
    {
        QVERIFY(Text(u"same"_s) == Text(u"same"_s));
        QVERIFY(Text(u"same"_s) != Text(u"sane"_s));
        QVERIFY(Text(u"same"_s) != Text());
        QVERIFY(Text(u"déjà"_s) == u"déjà"_s);
    }

    void numbersAreWrittenWhole()
    {
        NumberTexts<std::uint64_t> identifiers;
        NumberTexts<std::int64_t> numbers;
        QCOMPARE(identifiers(0).toString(), u"0"_s);
        QCOMPARE(identifiers(std::numeric_limits<std::uint64_t>::max()).toString(),
                 u"18446744073709551615"_s);
        QCOMPARE(numbers(-1).toString(), u"-1"_s);
    }

    void cachesGiveRightTextsWhenFull()
    {
        NumberTexts<std::uint64_t> identifiers;
        for (int round = 0; round < 2; ++round) {
            for (std::uint64_t i = 0; i < 100'000; ++i)
                QCOMPARE(identifiers(i * 64).utf8(), std::to_string(i * 64));
        }
    }

    void equalContentsShareOneText()
    {
        TextsByContent texts;
        const std::string first = "quillond";
        const std::string second = first;
        QVERIFY(texts(first).utf8().data() == texts(second).utf8().data());
        QVERIFY(texts({}).isEmpty());
        for (int i = 0; i < 100'000; ++i)
            QCOMPARE(texts(std::to_string(i)).utf8(), std::to_string(i));
    }
};

TESSEL_TEST(TestText)
#include "tst_text.moc"
