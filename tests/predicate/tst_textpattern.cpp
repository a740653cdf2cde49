// SPDX-License-Identifier: MIT
#include "platform/base/ascii.h"
#include "platform/predicate/matching/regexshortcut.h"
#include "platform/predicate/text/regexpattern.h"
#include "platform/predicate/text/textpattern.h"
#include "platform/predicate/text/utf16.h"
#include "support/predicategenerator.h"
#include "support/testcase.h"

#include <QTest>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

using namespace Qt::StringLiterals;
using namespace predicate;

namespace {

constexpr TextRelation relations[] = {TextRelation::Equal, TextRelation::Contains,
                                      TextRelation::BeginsWith, TextRelation::EndsWith,
                                      TextRelation::Like};

} // namespace

/// Prepared patterns take short cuts; the plain comparison of two folded texts takes none.
class TestTextPattern : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void shortCutsAgreeWithFolding()
    {
        PredicateGenerator generator(6);
        FoldedTexts folds;
        int matches = 0;
        for (int i = 0; i < 60'000; ++i) {
            const std::string text = generator.text() + generator.text();
            const std::string pattern = generator.sometimes()
                                            ? generator.text() + '*' + generator.text()
                                            : generator.text();
            const Folding folding(generator.below(2) == 0, generator.sometimes());
            const TextRelation relation = relations[generator.below(std::size(relations))];
            folds.clear();
            const bool expected = relates(relation, text, pattern, folding, folds);
            folds.clear();
            const bool actual = TextPattern(relation, pattern, folding).matches(text, folds);
            QVERIFY2(actual == expected, (text + " / " + pattern).c_str());
            matches += actual ? 1 : 0;
        }
        QVERIFY(matches > 1000);
    }

    void shortcutsAgreeWithRegularExpressions()
    {
        PredicateGenerator generator(10);
        FoldedTexts folds;
        std::array<int, 2> decided{};
        for (int i = 0; i < 60'000; ++i) {
            const Folding folding(generator.below(2) == 0, generator.sometimes());
            const std::string expression = generator.oneOf({"", "", "^", ".*", "(?i)", "(?s)"})
                                           + generator.expression(1)
                                           + generator.oneOf({"", "", "$", ".*"});
            const auto regex = compiledRegex(expression, folding);
            if (!regex)
                continue; // a repeated anchor, or the like
            const RegexShortcut shortcut(expression, folding);
            for (int j = 0; j < 4; ++j) {
                const std::string text =
                    generator.text() + generator.oneOf({"", "\n", "\r\n", "ﬁ"}) + generator.text();
                folds.clear();
                const Truth outcome = shortcut.matches(text, folds);
                if (outcome == Truth::Unknown)
                    continue;
                int overruns = 0;
                const std::u16string units = utf16(folded(text, Folding(false, folding.markless)));
                const bool expected = wholeMatches(regex->get(), units, overruns);
                QVERIFY2(truth(expected) == outcome, (expression + " / " + text).c_str());
                ++decided[expected ? 1 : 0];
            }
        }
        QVERIFY(decided[0] > 10'000 && decided[1] > 1'000);
    }

    void foldingInPiecesIsFoldingOfTheWhole()
    {
        const auto whole = [](const std::string& text) {
            UErrorCode status = U_ZERO_ERROR;
            const icu::Normalizer2* decomposer = icu::Normalizer2::getNFDInstance(status);
            const icu::UnicodeString decomposed =
                decomposer->normalize(icu::UnicodeString::fromUTF8(text), status);
            icu::UnicodeString out;
            for (std::int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
                const UChar32 character = decomposed.char32At(i);
                if (u_charType(character) != U_NON_SPACING_MARK)
                    out += u_foldCase(character, U_FOLD_CASE_DEFAULT);
            }
            std::string utf8;
            return out.toUTF8String(utf8);
        };
        PredicateGenerator generator(8);
        // Marks out of order, marks that are not of category Mn, syllables, what folds and
        // decomposes.
        const std::vector<std::string> uncommon = {
            "\u0323", "\u0301", "e\u0301\u0323", "\u1E9B\u0323", "한",
            "\u093F", "\u20DD", "\u0344",        "\U0001D15E",   "İ",
            "Å"};
        for (int i = 0; i < 20'000; ++i) {
            std::string text;
            for (int pieces = 0; pieces < 4; ++pieces)
                text += generator.sometimes() ? generator.text() : generator.oneOf(uncommon);
            QCOMPARE(folded(text, Folding(true, true)), whole(text));
        }
    }

    void onlyTwoCharactersFoldToAscii()
    {
        std::u32string found;
        for (char32_t character = 0x80; character <= 0x10FFFF; ++character) {
            if (u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT) < 0x80)
                found += character;
        }
        QCOMPARE(found, std::u32string(U"\u017F\u212A"));
    }

    void findsWhatASearchWithoutTricksFinds()
    {
        PredicateGenerator generator(7);
        std::array<int, 2> found{};
        for (int i = 0; i < 40'000; ++i) {
            std::string text;
            for (std::size_t length = generator.below(70); length > 0; --length)
                text += "abkAB[{\xC3"[generator.below(8)];
            std::string needle = text.substr(generator.below(text.size() + 1), generator.below(40));
            if (!needle.empty() && generator.sometimes())
                needle[generator.below(needle.size())] ^= ' ';
            const std::size_t from = generator.below(3);
            const std::size_t exact = ByteFinder(needle, ByteFinder::Case::Exact).find(text, from);
            QCOMPARE(exact, text.find(needle, from));
            const ByteFinder caseless(needle, ByteFinder::Case::AsciiIgnored);
            QCOMPARE(caseless.find(text, from),
                     asciiLowered(text).find(asciiLowered(needle), from));
            ++found[exact == ByteFinder::npos ? 0 : 1];
        }
        QVERIFY(found[0] > 5'000 && found[1] > 5'000);
    }

    void illFormedTexts()
    {
        FoldedTexts folds;
        for (const TextRelation relation : relations) {
            for (const std::string text :
                 {"\xff", "a\xe2\x84", "\xc5", "\xf0\x9f\x93", "\xed\xa0\x80"}) {
                folds.clear();
                QVERIFY(!TextPattern(relation, "é?k", Folding(true, true)).matches(text, folds));
            }
        }
        QCOMPARE(utf16("a\xff\xed\xa0\x80z"), std::u16string(u"a\uFFFD\uFFFD\uFFFD\uFFFDz"));
    }
};

TESSEL_TEST(TestTextPattern)
#include "tst_textpattern.moc"
