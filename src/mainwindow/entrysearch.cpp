// SPDX-License-Identifier: MIT
#include "mainwindow/entrysearch.h"

#include "mainwindow/textsearch.h"

#include <array>

namespace {

constexpr std::array<Text LogEntry::*, 4> searchedFields = {
    &LogEntry::composedMessage, &LogEntry::process, &LogEntry::sender, &LogEntry::subsystem};

const Text* searchedText(const LogEntry& entry, int searchType)
{
    if (searchType >= 0 && searchType < static_cast<int>(searchedFields.size()))
        return &(entry.*searchedFields[static_cast<std::size_t>(searchType)]);
    return entry.userNote ? &*entry.userNote : nullptr;
}

} // namespace

QList<LogEntry> entriesFound(const QList<LogEntry>& entries, int searchType, const QString& query)
{
    const TextSearch search(query);
    QList<LogEntry> found;
    for (const LogEntry& entry : entries) {
        const Text* const text = searchedText(entry, searchType);
        if (text != nullptr && search.isIn(text->utf8()))
            found.append(entry);
    }
    return found;
}
