// SPDX-License-Identifier: MIT
#include "mainwindow/messagerow.h"
#include "support/testcase.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Pieces = QList<std::pair<QString, FieldColour>>;

namespace {

/// An entry with its own name in every text field but the note.
LogEntry fullEntry(qint64 type)
{
    LogEntry entry;
    entry.type = type;
    entry.activityIdentifier = u"activity"_s;
    entry.category = u"category"_s;
    entry.composedMessage = u"message"_s;
    entry.date = u"date"_s;
    entry.level = u"level"_s;
    entry.parentActivityIdentifier = u"parent"_s;
    entry.process = u"process"_s;
    entry.processIdentifier = u"pid"_s;
    entry.sender = u"sender"_s;
    entry.signpostIdentifier = u"signpost"_s;
    entry.signpostName = u"name"_s;
    entry.signpostType = u"type"_s;
    entry.storeCategory = u"store"_s;
    entry.subsystem = u"subsystem"_s;
    entry.threadIdentifier = u"thread"_s;
    return entry;
}

LogEntry emptyEntry(qint64 type)
{
    LogEntry entry;
    entry.type = type;
    return entry;
}

LogEntry withNote(LogEntry entry, const QString& note)
{
    entry.userNote = note;
    return entry;
}

Pieces piecesOf(const MessageRow& row)
{
    Pieces pieces;
    for (const MessagePiece& piece : row.pieces())
        pieces.append({piece.text.toString(), piece.colour});
    return pieces;
}

} // namespace

class TestMessageRow : public TestCase
{
    Q_OBJECT

private Q_SLOTS:

    void pieces_data()
    {
        using enum FieldColour;
        QTest::addColumn<LogEntry>("entry");
        QTest::addColumn<bool>("fullMode");
        QTest::addColumn<Pieces>("expected");

        const Pieces shortForm{{u"date"_s, Normal},
                               {u"sender"_s, Red},
                               {u"subsystem"_s, Yellow},
                               {u"message"_s, Normal}};
        QTest::addRow("short form of a log message") << fullEntry(1) << false << shortForm;
        QTest::addRow("short form of a signpost") << fullEntry(4) << false << shortForm;
        QTest::addRow("short form of another kind") << fullEntry(10) << false << shortForm;
        QTest::addRow("short form with a note") << withNote(fullEntry(1), u"check"_s) << false
                                                << shortForm + Pieces{{u"📝 check"_s, Yellow}};
        QTest::addRow("short form with an empty note")
            << withNote(fullEntry(1), u""_s) << false << shortForm;

        const Pieces head{{u"activity"_s, Normal}, {u"category"_s, Green}, {u"level"_s, Normal},
                          {u"parent"_s, Normal},   {u"sender"_s, Red},     {u"process"_s, Blue},
                          {u"pid"_s, Blue}};
        const Pieces signpost{{u"signpost"_s, Green}, {u"name"_s, Blue}, {u"type"_s, Red}};
        const Pieces tail{{u"subsystem"_s, Yellow}, {u"thread"_s, Green}, {u"message"_s, Normal}};
        const auto marked = [](const QString& marker) {
            return Pieces{{u"date"_s, Normal}, {marker, Normal}};
        };
        QTest::addRow("full form of a log message, its signpost fields unseen")
            << fullEntry(1) << true << marked(u"▶\uFE0F"_s) + head + tail;
        QTest::addRow("full form of an activity")
            << fullEntry(2) << true << marked(u"🥎"_s) + head + tail;
        QTest::addRow("full form of a boundary")
            << fullEntry(3) << true << marked(u"🎬"_s) + head + tail;
        QTest::addRow("full form of a signpost")
            << fullEntry(4) << true << marked(u"📍"_s) + head + signpost + tail;
        QTest::addRow("full form of another kind")
            << fullEntry(10) << true << marked(u"⭕\uFE0F"_s) + head + tail;
        QTest::addRow("full form of kind 0")
            << fullEntry(0) << true << marked(u"⭕\uFE0F"_s) + head + tail;
        QTest::addRow("full form of a negative kind")
            << fullEntry(-1) << true << marked(u"⭕\uFE0F"_s) + head + tail;
        QTest::addRow("full form with a note")
            << withNote(fullEntry(2), u"check"_s) << true
            << marked(u"🥎"_s) + head + tail + Pieces{{u"📝 check"_s, Yellow}};

        QTest::addRow("date and message stay when empty")
            << emptyEntry(1) << false << Pieces{{QString(), Normal}, {QString(), Normal}};
        QTest::addRow("so does the marker")
            << emptyEntry(3) << true
            << Pieces{{QString(), Normal}, {u"🎬"_s, Normal}, {QString(), Normal}};
    }

    void pieces()
    {
        QFETCH(LogEntry, entry);
        QFETCH(bool, fullMode);
        QFETCH(Pieces, expected);
        QCOMPARE(piecesOf({entry, fullMode}), expected);
    }

    void spokenLine_data()
    {
        QTest::addColumn<LogEntry>("entry");
        QTest::addColumn<bool>("fullMode");
        QTest::addColumn<QString>("expected");
        QTest::addRow("short form")
            << fullEntry(1) << false << u"date, sender, subsystem, message"_s;
        QTest::addRow("kind in words, note named") << withNote(fullEntry(4), u"check"_s) << true
                                                   << u"date, signpost, activity, category, level, "
                                                      u"parent, sender, process, pid, signpost, "
                                                      u"name, type, "
                                                      "subsystem, thread, message, note: check"_s;
        QTest::addRow("nothing for empty fields") << emptyEntry(3) << true << u"boundary"_s;
    }

    void spokenLine()
    {
        QFETCH(LogEntry, entry);
        QFETCH(bool, fullMode);
        QFETCH(QString, expected);
        QCOMPARE((MessageRow{entry, fullMode}.spokenLine()), expected);
    }
};

TESSEL_TEST(TestMessageRow)
#include "tst_messagerow.moc"
