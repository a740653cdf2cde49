// SPDX-License-Identifier: MIT
#pragma once

#include "model/text.h"

#include <QList>
#include <QUuid>

#include <optional>

/// Kind codes of LogEntry::type. Any other value counts as Other.
enum LogEntryType : qint64 {
    LogMessageEntry = 1,
    ActivityEntry = 2,
    BoundaryEntry = 3,
    SignpostEntry = 4,
    OtherEntry = 10
};

/// The symbol that stands for a kind code in rows and rich text.
QString kindMarker(qint64 type);

/// Stands before a note, with its blank.
inline constexpr char16_t noteMarker[] = u"\U0001F4DD ";

/// One entry of the log, flattened into texts so that it can be shown, searched, annotated and
/// saved without the store it came from. Fields that do not apply to the kind are empty.
struct LogEntry
{
    QUuid id = makeId(); ///< identity of the record, random for each one made
    qint64 type = 0;     ///< kind code, see LogEntryType
    Text activityIdentifier;
    Text category;
    Text composedMessage;
    Text date; ///< 2024-03-07 14:05:09.031250+0100
    Text level;
    Text parentActivityIdentifier;
    Text process;
    Text processIdentifier;
    Text sender;
    Text signpostIdentifier;
    Text signpostName;
    Text signpostType;
    Text storeCategory;
    Text subsystem;
    Text threadIdentifier;
    std::optional<Text> userNote; ///< absent until the user adds one; an empty note is present

    /// The line that Copy puts on the pasteboard.
    QString plainTextLine() const;

    /// A random (version 4) UUID, from a generator seeded once per run.
    static QUuid makeId();
};

Q_DECLARE_TYPEINFO(LogEntry, Q_RELOCATABLE_TYPE);
