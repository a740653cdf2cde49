// SPDX-License-Identifier: MIT
#include "mainwindow/rowlayout.h"
#include "support/testcase.h"

#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal infinity = std::numeric_limits<qreal>::infinity();

RowLayout rowLayout()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(12);
    return {font, 8};
}

MessageRow rowWithMessage(const QString& message)
{
    LogEntry entry;
    entry.composedMessage = message;
    return {entry, false};
}

/// The runs' texts, marks in brackets.
QStringList textsOf(const QList<RowRun>& runs)
{
    QStringList texts;
    for (const RowRun& run : runs)
        texts.append(run.kind == RowRun::BreakMark ? u"["_s + run.text + u"]"_s : run.text);
    return texts;
}

/// The rows of an image that hold anything but its background.
std::pair<int, int> inkedRows(const QImage& image)
{
    int first = image.height();
    int last = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == qRgb(0, 0, 0))
                continue;
            first = std::min(first, y);
            last = y;
        }
    }
    return {first, last};
}

} // namespace

class TestRowLayout : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void piecesStandInOrderWithSpacing()
    {
        LogEntry entry;
        entry.date = u"12:00"_s;
        entry.sender = u"kernel"_s;
        entry.composedMessage = u"hello"_s;
        const RowLayout layout = rowLayout();
        const QList<RowRun> runs = layout.runs({entry, false}, infinity);
        QCOMPARE(textsOf(runs), (QStringList{u"12:00"_s, u"kernel"_s, u"hello"_s}));
        QCOMPARE(runs.at(1).colour, FieldColour::Red);
        QCOMPARE(runs.first().x, 0.0);
        const QFontMetricsF metrics(layout.font(RowRun::Letters));
        for (int i = 1; i < runs.size(); ++i) {
            const qreal gap =
                runs.at(i).x - runs.at(i - 1).x - metrics.horizontalAdvance(runs.at(i - 1).text);
            QVERIFY2(gap >= 7.5 && gap < 16, qPrintable(QString::number(gap)));
        }
    }

    void textsFallIntoRuns_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QStringList>("expected");
        QTest::addRow("line feed") << u"one\ntwo"_s << QStringList{u"one"_s, u"[⏎]"_s, u"two"_s};
        QTest::addRow("pair is one break")
            << u"one\r\ntwo"_s << QStringList{u"one"_s, u"[⏎]"_s, u"two"_s};
        QTest::addRow("two breaks")
            << u"one\n\ntwo"_s << QStringList{u"one"_s, u"[⏎]"_s, u"[⏎]"_s, u"two"_s};
        QTest::addRow("at both ends") << u"\none\r"_s << QStringList{u"[⏎]"_s, u"one"_s, u"[⏎]"_s};
        QTest::addRow("Unicode separators")
            << u"a\u2028b\u2029"_s << QStringList{u"a"_s, u"[⏎]"_s, u"b"_s, u"[⏎]"_s};
        QTest::addRow("tab is a blank") << u"a\tb"_s << QStringList{u"a b"_s};
        QTest::addRow("other controls are pictures") << u"\x1b[0m\x7f"_s << QStringList{u"␛[0m␡"_s};
        QTest::addRow("changes of direction are seen")
            << u"a\u202Eb\u2066c"_s << QStringList{u"a\uFFFDb\uFFFDc"_s};
        QTest::addRow("mark at the beginning stays")
            << u"\uFEFF\uFEFFa"_s << QStringList{u"\uFEFF\uFEFFa"_s};
        const QString long3999(3999, u'a');
        QTest::addRow("pair at the limit is not halved")
            << QString(long3999 + u"😀b"_s) << QStringList{long3999 + u'…'};
        QTest::addRow("emoji forms stand alone")
            << u"a ▶\uFE0F b"_s << QStringList{u"a "_s, u"▶\uFE0F"_s, u" b"_s};
        QTest::addRow("emoji of two units")
            << u"a🏷\uFE0Fb"_s << QStringList{u"a"_s, u"🏷\uFE0F"_s, u"b"_s};
        QTest::addRow("joined emoji")
            << u"❤\uFE0F\u200D🔥b"_s << QStringList{u"❤\uFE0F\u200D🔥"_s, u"b"_s};
        QTest::addRow("keycap") << u"1\uFE0F\u20E32"_s << QStringList{u"1\uFE0F\u20E3"_s, u"2"_s};
        QTest::addRow("joiner at the end")
            << u"❤\uFE0F\u200D"_s << QStringList{u"❤\uFE0F"_s, u"\u200D"_s};
    }

    void textsFallIntoRuns()
    {
        QFETCH(QString, message);
        QFETCH(QStringList, expected);
        QCOMPARE(textsOf(rowLayout().runs(rowWithMessage(message), infinity)), expected);
    }

    void markersAreDrawnWhole_data()
    {
        QTest::addColumn<QString>("text");
        for (const qint64 type :
             {LogMessageEntry, ActivityEntry, BoundaryEntry, SignpostEntry, OtherEntry})
            QTest::addRow("kind %lld", type) << kindMarker(type);
        QTest::addRow("note") << QString::fromUtf16(noteMarker);
        QTest::addRow("letters") << u"ÅÄgjp|"_s;
    }

    void markersAreDrawnWhole()
    {
        QFETCH(QString, text);
        const RowLayout layout = rowLayout();
        // Twice the height, so that what a row of its own would cut shows above or below it.
        const int height = static_cast<int>(layout.height());
        QImage image(200, 2 * height, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setPen(Qt::white);
        for (const RowRun& run : layout.runs(rowWithMessage(text), infinity)) {
            painter.setFont(layout.font(run.kind));
            painter.drawText(QPointF(20 + run.x, height / 2 + layout.baseLine()), run.text);
        }
        painter.end();
        const auto [first, last] = inkedRows(image);
        QVERIFY2(last > first, "nothing was drawn");
        QVERIFY2(first >= height / 2, qPrintable(u"top at %1"_s.arg(first - height / 2)));
        QVERIFY2(last < height / 2 + height,
                 qPrintable(u"bottom at %1 of %2"_s.arg(last - height / 2).arg(height)));
    }

    void stopsAtTheEnd()
    {
        LogEntry entry;
        entry.date = QString(500, u'd');
        entry.sender = u"sender"_s;
        entry.composedMessage = u"message"_s;
        const RowLayout layout = rowLayout();
        const QList<RowRun> runs = layout.runs({entry, false}, 200);
        QCOMPARE(runs.size(), 1);
        QVERIFY(runs.first().text.size() < 100);
        QVERIFY(QFontMetricsF(layout.font(RowRun::Letters)).horizontalAdvance(runs.first().text)
                >= 200);
    }

    void cutsHugeMessages_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addRow("ASCII") << u"m"_s;
        QTest::addRow("two bytes") << u"ü"_s;
        QTest::addRow("four bytes") << u"🎬"_s;
        QTest::addRow("line feeds") << u"\n"_s;
    }

    void cutsHugeMessages()
    {
        QFETCH(QString, unit);
        const QList<RowRun> runs =
            rowLayout().runs(rowWithMessage(unit.repeated(1'000'000)), infinity);
        qsizetype length = 0;
        for (const RowRun& run : runs) {
            QVERIFY(run.text.isValidUtf16());
            length += run.text.size();
        }
        QVERIFY2(length > 1000 && length < 10'000, qPrintable(QString::number(length)));
        QVERIFY(runs.last().text.endsWith(u'…'));
    }

    void widthIsTheEndOfTheLastRun_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addRow("plain") << u"a plain message"_s;
        QTest::addRow("accented") << u"für Übergrößen"_s;
        QTest::addRow("emoji and breaks") << u"x ⭕\uFE0F\n🎬 y"_s;
    }

    void widthIsTheEndOfTheLastRun()
    {
        QFETCH(QString, message);
        const RowLayout layout = rowLayout();
        const MessageRow row = rowWithMessage(message);
        const RowRun last = layout.runs(row, infinity).last();
        const qreal end =
            last.x + QFontMetricsF(layout.font(last.kind)).horizontalAdvance(last.text);
        QVERIFY(qAbs(layout.width(row) - end) < 1);
    }
};

TESSEL_TEST(TestRowLayout)
#include "tst_rowlayout.moc"
