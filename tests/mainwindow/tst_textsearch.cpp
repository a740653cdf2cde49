// SPDX-License-Identifier: MIT
#include "mainwindow/textsearch.h"
#include "support/testcase.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The characters, as a reader counts them, of a text's lower-cased and composed form.
QStringList charactersOf(const QString& text)
{
    const QString form = text.toLower().normalized(QString::NormalizationForm_C);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, form);
    QStringList characters;
    qsizetype from = 0;
    for (qsizetype to = finder.toNextBoundary(); to >= 0; to = finder.toNextBoundary()) {
        characters.append(form.mid(from, to - from));
        from = to;
    }
    return characters;
}

/// What a search means, without any of its speed.
bool referenceFinds(const QString& query, const QString& text)
{
    const QStringList wanted = charactersOf(query);
    const QStringList all = charactersOf(text);
    return std::search(all.begin(), all.end(), wanted.begin(), wanted.end()) != all.end()
           || wanted.isEmpty();
}

bool finds(const QString& query, const QString& text)
{
    return TextSearch(query).isIn(text.toStdString());
}

} // namespace

class TestTextSearch : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void finds_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");

        QTest::addRow("upper-case query") << u"ERROR"_s << u"An error occurred"_s << true;
        QTest::addRow("upper-case text") << u"error"_s << u"ERROR"_s << true;
        QTest::addRow("absent") << u"errors"_s << u"An error occurred"_s << false;
        QTest::addRow("at the very end") << u"last"_s << u"0123456789abcdef last"_s << true;
        QTest::addRow("almost at the end") << u"last"_s << u"0123456789abcdef las"_s << false;
        QTest::addRow("longer than the text") << u"kernel"_s << u"kern"_s << false;
        QTest::addRow("empty text") << u"a"_s << QString() << false;
        QTest::addRow("first and last letters alone") << u"abc"_s << u"axc axc axc axc"_s << false;
        QTest::addRow("punctuation is not letters in another case")
            << u"[x]"_s << u"{x}"_s << false;
        QTest::addRow("at sign is not a grave accent") << u"@"_s << u"`"_s << false;

        QTest::addRow("accented letters in another case")
            << u"ÜBERGRÖSSE"_s << u"eine übergrösse"_s << true;
        QTest::addRow("sharp s is no double s") << u"strasse"_s << u"Straße"_s << false;
        QTest::addRow("Greek in another case") << u"ΟΔΟΣ"_s << u"οδοσ"_s << true;
        QTest::addRow("composed query, decomposed text")
            << u"caf\u00e9"_s << u"cafe\u0301 au lait"_s << true;
        QTest::addRow("decomposed query, composed text")
            << u"cafe\u0301"_s << u"caf\u00e9"_s << true;
        QTest::addRow("marks in another order") << u"a\u0323\u0302"_s << u"a\u0302\u0323"_s << true;
        QTest::addRow("letter is not its accented form") << u"cafe"_s << u"caf\u00e9"_s << false;
        QTest::addRow("nor when decomposed") << u"cafe"_s << u"cafe\u0301"_s << false;
        QTest::addRow("though it stands elsewhere") << u"cafe"_s << u"cafe\u0301, cafe"_s << true;
        QTest::addRow("mark alone is no character") << u"\u0301"_s << u"e\u0301"_s << false;
        QTest::addRow("syllable is not the start of another") << u"하"_s << u"한"_s << false;
        QTest::addRow("syllable equals its letters") << u"한"_s << u"\u1112\u1161\u11ab"_s << true;
        QTest::addRow("emoji is not part of another") << u"👩"_s << u"👩‍💻"_s << false;

        QTest::addRow("kelvin sign is a k") << u"10 k"_s << u"at 10 \u212a"_s << true;
        QTest::addRow("query with the kelvin sign") << u"\u212a"_s << u"kernel"_s << true;
        QTest::addRow("dotted capital I is i with a dot") << u"i"_s << u"\u0130"_s << false;
        QTest::addRow("and equals it") << u"i\u0307x"_s << u"\u0130X"_s << true;
        QTest::addRow("dotless i is no i") << u"i"_s << u"\u0131"_s << false;
        QTest::addRow("Greek question mark is a semicolon") << u"a;"_s << u"A\u037e"_s << true;
        QTest::addRow("Greek varia is a grave accent") << u"`"_s << u"\u1fef"_s << true;
        QTest::addRow("ligature is not its letters") << u"fi"_s << u"\ufb01"_s << false;

        QTest::addRow("tab in the query") << u"a\tb"_s << u"xA\tB"_s << true;
        QTest::addRow("line feed of a pair") << u"\n"_s << u"a\r\nb"_s << false;
        QTest::addRow("zero byte in the text") << u"b"_s << u"a\0b"_s << true;
    }

    void finds()
    {
        QFETCH(QString, query);
        QFETCH(QString, text);
        QFETCH(bool, found);
        QCOMPARE(::finds(query, text), found);
        QCOMPARE(referenceFinds(query, text), found);
    }

    void agreesWithTheReference_data()
    {
        QTest::addColumn<QStringList>("alphabet");
        QTest::addRow("plain letters") << QStringList{u"a"_s, u"B"_s, u"b"_s, u"A"_s, u" "_s};
        QTest::addRow("letters and marks")
            << QStringList{u"e"_s, u"E"_s, u"é"_s, u"É"_s, u"\u0301"_s, u"\u0323"_s, u"x"_s};
        QTest::addRow("twins and traps")
            << QStringList{u"k"_s,      u"K"_s, u"\u212a"_s, u"i"_s, u"\u0130"_s,
                           u"\u0307"_s, u";"_s, u"\u037e"_s, u"`"_s, u"\u1fef"_s};
        QTest::addRow("joined characters")
            << QStringList{u"👩"_s, u"\u200d"_s, u"💻"_s,  u"\ufe0f"_s, u"🇩"_s,
                           u"🇪"_s, u"a"_s,      u"\r"_s, u"\n"_s,     u"\u0600"_s};
        QTest::addRow("syllables") << QStringList{u"한"_s,     u"하"_s, u"\u1112"_s, u"\u1161"_s,
                                                  u"\u11ab"_s, u"क"_s,  u"ि"_s,      u"a"_s};
    }

    void agreesWithTheReference()
    {
        QFETCH(QStringList, alphabet);
        QRandomGenerator random(20240307);
        const auto word = [&](int longest) {
            QString text;
            for (int length = random.bounded(longest + 1); length > 0; --length)
                text += alphabet.at(random.bounded(static_cast<int>(alphabet.size())));
            return text;
        };
        for (int i = 0; i < 20'000; ++i) {
            const QString query = word(4);
            const QString text = word(24);
            if (::finds(query, text) != referenceFinds(query, text))
                QFAIL(qPrintable(
                    u"query %1 in %2"_s.arg(QString::fromLatin1(query.toUtf8().toHex(' ')),
                                            QString::fromLatin1(text.toUtf8().toHex(' ')))));
        }
    }

    void canonicalFormsFindAlike()
    {
        const QString text = u"Ångström café Việt 한국"_s;
        for (const QString& query : {u"ångström"_s, u"CAFÉ"_s, u"việt"_s, u"한국"_s}) {
            for (const auto form : {QString::NormalizationForm_C, QString::NormalizationForm_D}) {
                QVERIFY(
                    ::finds(query.normalized(form), text.normalized(QString::NormalizationForm_C)));
                QVERIFY(
                    ::finds(query.normalized(form), text.normalized(QString::NormalizationForm_D)));
            }
        }
    }
};

TESSEL_TEST(TestTextSearch)
#include "tst_textsearch.moc"
