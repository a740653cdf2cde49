// SPDX-License-Identifier: MIT
#include "mainwindow/messagerow.h"

#include <QCoreApplication>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace {

enum class Shown { BothForms, FullForm, FullFormOfSignposts };

struct FieldPiece
{
    Text LogEntry::*field;
    FieldColour colour;
    Shown shown;
    bool evenWhenEmpty = false;
};

// In the order of the row. The marker comes after the first piece, the note after the last.
constexpr std::array fieldPieces = std::to_array<FieldPiece>({
    {&LogEntry::date, FieldColour::Normal, Shown::BothForms, true},
    {&LogEntry::activityIdentifier, FieldColour::Normal, Shown::FullForm},
    {&LogEntry::category, FieldColour::Green, Shown::FullForm},
    {&LogEntry::level, FieldColour::Normal, Shown::FullForm},
    {&LogEntry::parentActivityIdentifier, FieldColour::Normal, Shown::FullForm},
    {&LogEntry::sender, FieldColour::Red, Shown::BothForms},
    {&LogEntry::process, FieldColour::Blue, Shown::FullForm},
    {&LogEntry::processIdentifier, FieldColour::Blue, Shown::FullForm},
    {&LogEntry::signpostIdentifier, FieldColour::Green, Shown::FullFormOfSignposts},
    {&LogEntry::signpostName, FieldColour::Blue, Shown::FullFormOfSignposts},
    {&LogEntry::signpostType, FieldColour::Red, Shown::FullFormOfSignposts},
    {&LogEntry::subsystem, FieldColour::Yellow, Shown::BothForms},
    {&LogEntry::threadIdentifier, FieldColour::Green, Shown::FullForm},
    {&LogEntry::composedMessage, FieldColour::Normal, Shown::BothForms, true},
});

QString kindWord(qint64 type)
{
    switch (type) {
    case LogMessageEntry: return QCoreApplication::translate("MessageRow", "log message");
    case ActivityEntry: return QCoreApplication::translate("MessageRow", "activity");
    case BoundaryEntry: return QCoreApplication::translate("MessageRow", "boundary");
    case SignpostEntry: return QCoreApplication::translate("MessageRow", "signpost");
    default: return QCoreApplication::translate("MessageRow", "other entry");
    }
}

bool shows(const MessageRow& row, const FieldPiece& piece)
{
    if (!piece.evenWhenEmpty && (row.line.*piece.field).isEmpty())
        return false;
    switch (piece.shown) {
    case Shown::BothForms: return true;
    case Shown::FullForm: return row.fullMode;
    case Shown::FullFormOfSignposts: return row.fullMode && row.line.type == SignpostEntry;
    }
    Q_UNREACHABLE();
}

/// The pieces with the given marker and prefix of the note.
QList<MessagePiece>
piecesOf(const MessageRow& row, const QString& markerText, const QString& notePrefix)
{
    QList<MessagePiece> pieces;
    pieces.reserve(16);
    for (const FieldPiece& piece : fieldPieces) {
        if (shows(row, piece))
            pieces.append({row.line.*piece.field, piece.colour});
        if (piece.field == &LogEntry::date && row.fullMode)
            pieces.append({markerText, FieldColour::Normal});
    }
    if (row.line.userNote && !row.line.userNote->isEmpty())
        pieces.append({notePrefix + row.line.userNote->toString(), FieldColour::Yellow});
    return pieces;
}

} // namespace

QList<MessagePiece> MessageRow::pieces() const
{
    return piecesOf(*this, kindMarker(line.type), QString::fromUtf16(noteMarker));
}

QString MessageRow::spokenLine() const
{
    const QString note = QCoreApplication::translate("MessageRow", "note: ");
    QStringList texts;
    for (const MessagePiece& piece : piecesOf(*this, kindWord(line.type), note)) {
        if (!piece.text.isEmpty())
            texts.append(piece.text.toString());
    }
    return texts.join(u", "_s);
}
