// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"

bool writeEntryList(const QList<LogEntry>&, QIODevice&)
{
    return false;
}
Result<void> saveEntryList(const QList<LogEntry>&, const QString&)
{
    return failure("Entry lists cannot be saved yet.");
}
Result<QList<LogEntry>> loadEntryList(const QString&)
{
    return failure("Entry lists cannot be read yet.");
}
