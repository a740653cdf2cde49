// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"

#include <QList>

/// Entries with a different text in each field that their kind has.
LogEntry sampleLogMessage();
LogEntry sampleActivity();
LogEntry sampleBoundary();
LogEntry sampleSignpost();

/// One of each kind, one of them with a note.
QList<LogEntry> sampleEntries();

/// Many log messages like those of a real Mac: few processes, messages of different lengths.
QList<LogEntry> manyEntries(int count);

/// The first field in which two entries differ, or nothing when they are equal in all.
QString firstDifference(const LogEntry& a, const LogEntry& b);
