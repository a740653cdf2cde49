// SPDX-License-Identifier: MIT
#pragma once

#include "model/entrydate.h"
#include "model/logentry.h"
#include "model/textcache.h"
#include "platform/logstore/entry.h"

#include <QTimeZone>

#include <optional>

/// Makes the records of one fetch from the entries of one store, which must outlive the fetch:
/// the texts that a store interns are known here by their addresses.
class EntryConversion
{
public:
    /// `zone` gives the clock times, `tzStr` stands after each of them.
    EntryConversion(bool signposts, const QTimeZone& zone, const QString& tzStr);

    /// Nothing for a signpost when signposts are not wanted.
    std::optional<LogEntry> operator()(const logstore::Entry& from);

private:
    void takeLog(const logstore::Entry& from, LogEntry& to);
    void takeActivity(const logstore::Entry& from, LogEntry& to);
    void takeSignpost(const logstore::Entry& from, LogEntry& to);
    void takeOrigin(const logstore::Entry& from, LogEntry& to);
    Text unlessZero(std::uint64_t identifier);

    bool m_signposts;
    EntryDateWriter m_date;
    TextsByAddress m_interned;
    NumberTexts<std::uint64_t> m_identifiers;
    NumberTexts<std::int64_t> m_numbers;
    std::array<Text, 7> m_levels;
};
