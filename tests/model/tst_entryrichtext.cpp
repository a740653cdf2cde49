// SPDX-License-Identifier: MIT
#include "model/entryrichtext.h"
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QBuffer>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::vector<TextRun>)

namespace {

constexpr auto text = ColourRole::Text;
constexpr auto green = ColourRole::Green;
constexpr auto red = ColourRole::Red;
constexpr auto blue = ColourRole::Blue;
constexpr auto yellow = ColourRole::Yellow;

LogEntry withNote(LogEntry entry, const QString& note)
{
    entry.userNote = Text(note);
    return entry;
}

LogEntry ofType(qint64 type)
{
    LogEntry entry;
    entry.type = type;
    entry.date = u"date"_s;
    entry.composedMessage = u"message"_s;
    return entry;
}

QByteArray rtf(const QList<LogEntry>& entries)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return writeRichText(entries, buffer) ? buffer.data() : QByteArray();
}

/// What stands in the document for a boundary with this message, from after its marker.
QByteArray rtfOfMessage(const QString& message)
{
    LogEntry entry = ofType(BoundaryEntry);
    entry.composedMessage = message;
    const QByteArray document = rtf({entry});
    const qsizetype start = document.indexOf("\\u-8276\\'3f  ") + 13; // the second half of 🎬
    return document.mid(start, document.indexOf("\\par\n", start) - start);
}

} // namespace

class TestEntryRichText : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void runs_data()
    {
        QTest::addColumn<LogEntry>("entry");
        QTest::addColumn<std::vector<TextRun>>("expected");
        using Runs = std::vector<TextRun>;

        LogEntry inActivity = sampleLogMessage();
        inActivity.activityIdentifier = u"42"_s;
        const TextRun date{"2024-03-07 14:05:09.031250+0100 ", text};
        QTest::newRow("log message") << sampleLogMessage()
                                     << Runs{date,
                                             {"▶️  ", text},
                                             {"sync ", green},
                                             {"error ", text},
                                             {"QuillonKit ", red},
                                             {"quillond ", blue},
                                             {"311 ", blue},
                                             {"org.tessel.quillon ", yellow},
                                             {"90210 ", green},
                                             {"synchronised 3 of 4\n", text}};
        QTest::newRow("log message in an activity, noted") << withNote(inActivity, u"look"_s)
                                                           << Runs{date,
                                                                   {"▶️  ", text},
                                                                   {"42 ", text},
                                                                   {"sync ", green},
                                                                   {"error ", text},
                                                                   {"QuillonKit ", red},
                                                                   {"quillond ", blue},
                                                                   {"311 ", blue},
                                                                   {"org.tessel.quillon ", yellow},
                                                                   {"90210 ", green},
                                                                   {"synchronised 3 of 4 ", text},
                                                                   {"📝 look\n", blue}};
        QTest::newRow("empty fields keep their pieces")
            << ofType(LogMessageEntry)
            << Runs{{"date ", text}, {"▶️  ", text}, {" ", green}, {" ", text},
                    {" ", red},      {" ", blue},        {" ", blue},  {" ", yellow},
                    {" ", green},    {"message\n", text}};
        QTest::newRow("activity") << sampleActivity()
                                  << Runs{{"2024-03-07 14:05:10.000001+0100 ", text},
                                          {"🥎  ", text},
                                          {"42 ", text},
                                          {"0 ", text},
                                          {"QuillonKit ", red},
                                          {"quillond ", blue},
                                          {"311 ", blue},
                                          {"90210 ", green},
                                          {"check for updates\n", text}};
        QTest::newRow("activity without identifier")
            << ofType(ActivityEntry)
            << Runs{{"date ", text}, {"🥎  ", text}, {" ", text},  {" ", text},        {" ", red},
                    {" ", blue},     {" ", blue},      {" ", green}, {"message\n", text}};
        QTest::newRow("boundary") << ofType(BoundaryEntry)
                                  << Runs{{"date ", text}, {"🎬  ", text}, {"message\n", text}};
        QTest::newRow("boundary with an empty note")
            << withNote(ofType(BoundaryEntry), QString())
            << Runs{{"date ", text}, {"🎬  ", text}, {"message ", text}, {"📝 \n", blue}};
        const Runs signpost{{"2024-03-07 14:05:11.500000+0100 ", text},
                            {"📍  ", text},
                            {"0 ", text},
                            {"rendering ", green},
                            {"QuillonKit ", red},
                            {"quillond ", blue},
                            {"311 ", blue},
                            {"18446744073709551614 ", green},
                            {"layout ", blue},
                            {"1 ", red},
                            {"org.tessel.demo ", yellow}};
        Runs plain = signpost;
        plain.push_back({"90210\n", green});
        QTest::newRow("signpost") << sampleSignpost() << plain;
        Runs noted = signpost;
        noted.push_back({"90210 ", green});
        noted.push_back({"📝 slow\n", blue});
        LogEntry withMessage = withNote(sampleSignpost(), u"slow"_s);
        withMessage.composedMessage = u"not written"_s;
        QTest::newRow("signpost with a note, and a message that stays away")
            << withMessage << noted;
        for (const qint64 other : {10, 0, 7, 5, -1}) {
            QTest::addRow("other code %lld", other)
                << ofType(other) << Runs{{"date ", text}, {"⭕️  ", red}, {"message\n", text}};
        }
    }

    void runs()
    {
        QFETCH(LogEntry, entry);
        QFETCH(std::vector<TextRun>, expected);
        const std::vector<TextRun> actual = richTextRuns(entry);
        for (std::size_t i = 0; i < std::min(actual.size(), expected.size()); ++i) {
            QCOMPARE(actual[i].text, expected[i].text);
            QCOMPARE(actual[i].colour, expected[i].colour);
        }
        QCOMPARE(actual.size(), expected.size());
    }

    void escapes_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("braces and backslashes") << u"{\\rtf}"_s << "\\{\\\\rtf\\}"_ba;
        QTest::newRow("beyond ASCII") << u"é"_s << "\\u233\\'3f"_ba;
        QTest::newRow("upper half of the plane") << u"\uFFFD"_s << "\\u-3\\'3f"_ba;
        QTest::newRow("surrogate pair") << u"\U0001F4CD"_s << "\\u-10179\\'3f\\u-9011\\'3f"_ba;
        QTest::newRow("digit after an escape") << u"é1"_s << "\\u233\\'3f1"_ba;
        QTest::newRow("line feeds") << u"a\nb\n\nc"_s << "a\\line\nb\\line\n\\line\nc"_ba;
        QTest::newRow("carriage return and line feed are one break")
            << u"a\r\nb"_s << "a\\line\nb"_ba;
        QTest::newRow("carriage return alone") << u"a\rb"_s << "a\\line\nb"_ba;
        QTest::newRow("line feed at the end stays within") << u"a\n"_s << "a\\line\n"_ba;
        QTest::newRow("tabulator") << u"a\tb"_s << "a\\tab b"_ba;
        QTest::newRow("control characters become their pictures")
            << u"a\u0001b\u007f"_s << "a\\u9217\\'3fb\\u127\\'3f"_ba;
        QTest::newRow("zero character") << QString(QChar(u'\0')) << "\\u9216\\'3f"_ba;
        QTest::newRow("line separator") << u"a\u2028b"_s << "a\\u8232\\'3fb"_ba;
    }

    void escapes()
    {
        QFETCH(QString, message);
        QTEST(rtfOfMessage(message), "written");
    }

    void startsWithItsTablesAndClosesItsGroup()
    {
        const QByteArray document = rtf(sampleEntries());
        QVERIFY(document.startsWith("{\\rtf1\\ansi"));
        QVERIFY(document.contains("{\\*\\generator Tessel;}"));
        QVERIFY(document.contains("{\\fonttbl{\\f0"));
        QVERIFY(document.contains("{\\colortbl;\\red"));
        QByteArray structure = document;
        structure.replace("\\\\", "").replace("\\{", "").replace("\\}", "");
        QCOMPARE(structure.count('{'), structure.count('}'));
        QVERIFY(document.endsWith("}\n"));
    }

    void coloursAtTheStartAndWhereTheyChange()
    {
        const QByteArray document = rtf({sampleLogMessage()});
        const QByteArray line = document.mid(document.indexOf("\\cf0 2024-"));
        QCOMPARE(
            line,
            "\\cf0 2024-03-07 14:05:09.031250+0100 \\u9654\\'3f\\u-497\\'3f  \\cf1 sync \\cf0 "
            "error "
            "\\cf2 QuillonKit "
            "\\cf3 quillond 311 \\cf4 org.tessel.quillon \\cf1 90210 \\cf0 synchronised 3 of 4\\par\n}\n"_ba);
    }

    void linesEndTheirParagraphs()
    {
        LogEntry entry = ofType(BoundaryEntry);
        entry.composedMessage = u"first\nsecond"_s;
        const QByteArray document = rtf({entry, withNote(entry, u"a\nb"_s), sampleSignpost()});
        QCOMPARE(document.count("\\par\n"), 3);
        QCOMPARE(document.count("\\line\n"), 3);
    }

    void everyColourReadsWellOnWhite()
    {
        // Relative luminance and contrast as accessibility guidelines reckon them: 4.5 is the
        // least.
        const auto linear = [](int value) {
            const double share = value / 255.0;
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        const QRegularExpression colour(u"\\\\red(\\d+)\\\\green(\\d+)\\\\blue(\\d+);"_s);
        int met = 0;
        for (auto it = colour.globalMatch(QString::fromLatin1(rtf({}))); it.hasNext(); ++met) {
            const auto match = it.next();
            const auto part = [&](int index) { return linear(match.captured(index).toInt()); };
            const double luminance = 0.2126 * part(1) + 0.7152 * part(2) + 0.0722 * part(3);
            QVERIFY2(1.05 / (luminance + 0.05) >= 4.5, qPrintable(match.captured()));
        }
        QCOMPARE(met, 4);
    }

    void longListsComeOutWhole()
    {
        // Longer than the writer's buffer, with one message longer than that by itself.
        QList<LogEntry> entries = manyEntries(5000);
        entries[2500].composedMessage = QString(3'000'000, u'x');
        const QByteArray document = rtf(entries);
        QCOMPARE(document.count("\\par\n"), 5000);
        QCOMPARE(document.count('x') >= 3'000'000, true);
        QVERIFY(document.contains(entries.last().composedMessage.toString().left(20).toUtf8()));
    }
};

TESSEL_TEST(TestEntryRichText)
#include "tst_entryrichtext.moc"
