// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"

#include <QList>
#include <QString>

/// The entries, in their order, whose field of the search type contains the query, letter case
/// apart. Types are 0 messages, 1 processes, 2 senders, 3 subsystems, any other notes; an entry
/// without a note is never among them.
QList<LogEntry> entriesFound(const QList<LogEntry>& entries, int searchType, const QString& query);
