// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"
#include "platform/base/result.h"

#include <QList>

class QIODevice;

/// Writes the entries as one JSON array in UTF-8, each an object with the names of its fields.
/// Returns false when the device does not take the bytes; its errorString() says why.
bool writeEntryList(const QList<LogEntry>& entries, QIODevice& to);

/// Reads what writeEntryList() writes, and every other spelling of it that JSON allows. Members
/// with other names are passed over; of two members with one name the last counts. The description
/// of a failure is the reason alone, for a sentence that names the file; it says which entry and
/// member.
Result<QList<LogEntry>> readEntryList(QIODevice& from);

Result<void> saveEntryList(const QList<LogEntry>& entries, const QString& path);
Result<QList<LogEntry>> loadEntryList(const QString& path);
