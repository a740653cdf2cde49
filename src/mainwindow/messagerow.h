// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"

#include <QList>

/// The named colours of a row's pieces; Normal is the list's own text colour.
enum class FieldColour { Normal, Red, Green, Blue, Yellow };

/// One text of a row. Pieces stand side by side with the default spacing between them.
struct MessagePiece
{
    Text text;
    FieldColour colour = FieldColour::Normal;
};

/// One entry as the list shows it: which texts, in which order, in which colours.
struct MessageRow
{
    LogEntry line;
    bool fullMode = false;

    QList<MessagePiece> pieces() const;

    /// The row as one line for assistive tools, emoji named in words.
    QString spokenLine() const;
};
