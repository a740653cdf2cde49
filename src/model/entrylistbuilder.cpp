// SPDX-License-Identifier: MIT
#include "model/entrylistbuilder.h"

#include "platform/logstore/uuid.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

const std::array<EntryMember, 18> entryMembers{{
    {"id"},
    {"type"},
    {"activityIdentifier", &LogEntry::activityIdentifier, true},
    {"category", &LogEntry::category, true},
    {"composedMessage", &LogEntry::composedMessage},
    {"date", &LogEntry::date},
    {"level", &LogEntry::level, true},
    {"parentActivityIdentifier", &LogEntry::parentActivityIdentifier, true},
    {"process", &LogEntry::process, true},
    {"processIdentifier", &LogEntry::processIdentifier, true},
    {"sender", &LogEntry::sender, true},
    {"signpostIdentifier", &LogEntry::signpostIdentifier, true},
    {"signpostName", &LogEntry::signpostName, true},
    {"signpostType", &LogEntry::signpostType, true},
    {"storeCategory", &LogEntry::storeCategory, true},
    {"subsystem", &LogEntry::subsystem, true},
    {"threadIdentifier", &LogEntry::threadIdentifier, true},
    {"userNote"},
}};

namespace {

constexpr std::uint32_t requiredMembers = (1U << userNoteMember) - 1;

std::size_t indexOf(std::string_view name, std::size_t otherwise)
{
    for (std::size_t i = 0; i < entryMembers.size(); ++i) {
        if (entryMembers[i].name == name)
            return i;
    }
    return otherwise;
}

} // namespace

bool EntryListBuilder::beginArray()
{
    if (m_depth != outside)
        return descend();
    m_depth = inList;
    return true;
}

bool EntryListBuilder::beginObject()
{
    if (m_depth != inList)
        return descend();
    m_entries.emplaceBack();
    m_met = 0;
    m_likelyMember = 0;
    m_depth = inEntry;
    return true;
}

bool EntryListBuilder::descend()
{
    if (!isIgnoring())
        return misfit();
    if (m_depth == deepest)
        return failEntry(QT_TRANSLATE_NOOP("Failures", "Entry %1 is nested too deeply."));
    ++m_depth;
    return true;
}

bool EntryListBuilder::end()
{
    if (m_depth == inEntry && !endEntry())
        return false;
    --m_depth;
    return true;
}

bool EntryListBuilder::endEntry()
{
    for (std::size_t i = 0; m_met != requiredMembers && i < userNoteMember; ++i) {
        if ((m_met & 1U << i) == 0)
            return failMember(
                i, QT_TRANSLATE_NOOP("Failures", "In entry %1 the member “%2” is missing."));
    }
    return true;
}

bool EntryListBuilder::key(std::string_view name)
{
    if (m_depth > inEntry)
        return true;
    m_member = m_likelyMember;
    if (m_member >= entryMembers.size() || entryMembers[m_member].name != name)
        m_member = indexOf(name, ignored);
    if (m_member == ignored)
        return true;
    m_likelyMember = m_member + 1;
    if (m_member != userNoteMember)
        m_met |= 1U << m_member;
    return true;
}

bool EntryListBuilder::string(std::string_view value)
{
    if (isIgnoring())
        return true;
    if (m_depth != inEntry || m_member == typeMember)
        return misfit();
    return m_member == idMember ? takeId(value) : takeText(value);
}

bool EntryListBuilder::takeId(std::string_view value)
{
    const auto hasHyphen = [value](std::size_t at) { return value[at] == '-'; };
    constexpr std::size_t length = 36;
    if (value.size() != length || !hasHyphen(8) || !hasHyphen(13) || !hasHyphen(18)
        || !hasHyphen(23))
        return misfit();
    const auto uuid = logstore::Uuid::fromText(value);
    if (!uuid)
        return misfit();
    m_entries.last().id = QUuid::fromRfc4122(uuid->bytes);
    return true;
}

bool EntryListBuilder::takeText(std::string_view value)
{
    if (value.size() > std::numeric_limits<std::uint32_t>::max())
        return failMember(
            m_member, QT_TRANSLATE_NOOP("Failures", "In entry %1 the member “%2” is too long."));
    LogEntry& entry = m_entries.last();
    if (m_member == userNoteMember) {
        entry.userNote = Text(value);
        return true;
    }
    const EntryMember& member = entryMembers[m_member];
    entry.*member.text = member.isShared ? m_shared(value) : Text(value);
    return true;
}

bool EntryListBuilder::integer(qint64 value)
{
    if (isIgnoring())
        return true;
    if (m_depth != inEntry || m_member != typeMember)
        return misfit();
    m_entries.last().type = value;
    return true;
}

bool EntryListBuilder::number(double value)
{
    // A whole number may be spelt 1.0 or 1e0. Beyond this limit a double no longer holds each one.
    constexpr double exactLimit = 9007199254740992;
    if (isIgnoring())
        return true;
    if (std::trunc(value) != value || std::abs(value) > exactLimit)
        return misfit();
    return integer(static_cast<qint64>(value));
}

bool EntryListBuilder::boolean()
{
    return isIgnoring() || misfit();
}

bool EntryListBuilder::null()
{
    if (isIgnoring())
        return true;
    if (m_depth != inEntry || m_member != userNoteMember)
        return misfit();
    m_entries.last().userNote.reset();
    return true;
}

bool EntryListBuilder::misfit()
{
    if (m_depth == outside) {
        m_error = QCoreApplication::translate("Failures", "It does not hold a list of entries.")
                      .toStdString();
        return false;
    }
    if (m_depth == inList) {
        m_entries.emplaceBack(); // which counts
        return failEntry(QT_TRANSLATE_NOOP("Failures", "Entry %1 is not an object."));
    }
    switch (m_member) {
    case idMember:
        return failMember(
            m_member, QT_TRANSLATE_NOOP("Failures", "In entry %1 the member “%2” is not a UUID."));
    case typeMember:
        return failMember(
            m_member,
            QT_TRANSLATE_NOOP("Failures",
                              "In entry %1 the member “%2” is not a whole number of 64 bits."));
    default:
        return failMember(
            m_member,
            QT_TRANSLATE_NOOP("Failures", "In entry %1 the member “%2” is not a string."));
    }
}

bool EntryListBuilder::failEntry(const char* sentence)
{
    m_error = QCoreApplication::translate("Failures", sentence).arg(entryNumber()).toStdString();
    return false;
}

bool EntryListBuilder::failMember(std::size_t member, const char* sentence)
{
    const std::string_view name = entryMembers[member].name;
    m_error = QCoreApplication::translate("Failures", sentence)
                  .arg(QString::number(entryNumber()),
                       QString::fromUtf8(name.data(), qsizetype(name.size())))
                  .toStdString();
    return false;
}
