// SPDX-License-Identifier: MIT
#include "model/entryconversion.h"

#include <algorithm>

namespace {

/// By raw value; the last one stands for every other value.
constexpr std::array<std::string_view, 7> levelNames = {"undefined", "debug", "info",   "notice",
                                                        "error",     "fault", "default"};

template <typename Enumeration>
constexpr auto rawValue(Enumeration value)
{
    return static_cast<std::underlying_type_t<Enumeration>>(value);
}

} // namespace

EntryConversion::EntryConversion(bool signposts, const QTimeZone& zone, const QString& tzStr)
    : m_signposts(signposts)
    , m_date(zone, tzStr)
{
    for (std::size_t i = 0; i < levelNames.size(); ++i)
        m_levels[i] = Text(levelNames[i]);
}

std::optional<LogEntry> EntryConversion::operator()(const logstore::Entry& from)
{
    using logstore::EntryKind;
    const EntryKind kind = from.kind();
    if (kind == EntryKind::Signpost && !m_signposts)
        return std::nullopt;

    std::optional<LogEntry> made(std::in_place);
    LogEntry& to = *made;
    to.type = rawValue(kind);
    to.date = m_date(from.time());
    to.storeCategory = m_numbers(rawValue(from.storeCategory()));
    if (kind != EntryKind::Signpost)
        to.composedMessage = Text(from.composedMessage());
    switch (kind) {
    case EntryKind::Log: takeLog(from, to); break;
    case EntryKind::Activity: takeActivity(from, to); break;
    case EntryKind::Signpost: takeSignpost(from, to); break;
    case EntryKind::Boundary:
    case EntryKind::Other: break;
    }
    return made;
}

void EntryConversion::takeLog(const logstore::Entry& from, LogEntry& to)
{
    to.activityIdentifier = unlessZero(from.activityIdentifier());
    to.level = m_levels[std::min<std::size_t>(rawValue(from.level()), m_levels.size() - 1)];
    to.subsystem = m_interned(from.subsystem());
    to.category = m_interned(from.category());
    takeOrigin(from, to);
}

void EntryConversion::takeActivity(const logstore::Entry& from, LogEntry& to)
{
    to.activityIdentifier = unlessZero(from.activityIdentifier());
    to.parentActivityIdentifier = m_identifiers(from.parentActivityIdentifier());
    takeOrigin(from, to);
}

void EntryConversion::takeSignpost(const logstore::Entry& from, LogEntry& to)
{
    to.activityIdentifier = m_identifiers(from.activityIdentifier());
    to.signpostIdentifier = m_identifiers(from.signpostIdentifier());
    to.signpostName = m_interned(from.signpostName());
    to.signpostType = m_numbers(rawValue(from.signpostType()));
    to.subsystem = m_interned(from.subsystem());
    to.category = m_interned(from.category());
    takeOrigin(from, to);
}

void EntryConversion::takeOrigin(const logstore::Entry& from, LogEntry& to)
{
    to.process = m_interned(from.process());
    to.processIdentifier = m_numbers(from.processIdentifier());
    to.sender = m_interned(from.sender());
    to.threadIdentifier = m_identifiers(from.threadIdentifier());
}

Text EntryConversion::unlessZero(std::uint64_t identifier)
{
    return identifier == 0 ? Text() : m_identifiers(identifier);
}
