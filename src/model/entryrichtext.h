// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"
#include "platform/base/result.h"

#include <QList>

#include <string>
#include <vector>

class QIODevice;

enum class ColourRole { Text, Green, Red, Blue, Yellow };

/// A piece of an entry's line.
struct TextRun
{
    std::string text; ///< UTF-8
    ColourRole colour = ColourRole::Text;

    bool operator==(const TextRun& other) const
    {
        return text == other.text && colour == other.colour;
    }
};

/// The line of an entry, with the line feed at its end.
std::vector<TextRun> richTextRuns(const LogEntry& entry);

/// Writes the lines of the entries as one RTF document, in colours for a white page. Returns false
/// when the device does not take the bytes; its errorString() says why.
bool writeRichText(const QList<LogEntry>& entries, QIODevice& to);

Result<void> saveRichText(const QList<LogEntry>& entries, const QString& path);
