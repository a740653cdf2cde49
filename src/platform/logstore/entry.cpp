// SPDX-License-Identifier: MIT
#include "platform/logstore/entry.h"

#include "platform/logstore/entryresolver.h"
#include "platform/logstore/message/simpledump.h"
#include "platform/logstore/message/statedump.h"

namespace logstore {

namespace {

constexpr std::uint8_t memoryStream = 2;

StoreCategory categoryOfDays(std::uint8_t days)
{
    if (days == 0)
        return StoreCategory::LongTermAuto;
    if (days == 1)
        return StoreCategory::LongTerm1;
    if (days <= 3)
        return StoreCategory::LongTerm3;
    if (days <= 7)
        return StoreCategory::LongTerm7;
    return days <= 14 ? StoreCategory::LongTerm14 : StoreCategory::LongTerm30;
}

bool hasCurrentActivity(const RecordState& state)
{
    return state.event == EventType::Log || state.event == EventType::Signpost
           || state.event == EventType::UserAction;
}

std::string_view pathOf(const Image* image)
{
    return image ? image->path : std::string_view();
}

std::string_view nameOf(const Image* image)
{
    return image ? image->name : std::string_view();
}

} // namespace

EntryKind Entry::kind() const
{
    return m_state.kind;
}
EventType Entry::event() const
{
    return m_state.event;
}
std::int64_t Entry::time() const
{
    return m_state.time;
}
std::uint64_t Entry::continuousTime() const
{
    return m_state.continuousTime;
}
const Uuid& Entry::bootUuid() const
{
    return m_resolver.clock(m_state).boot();
}

std::uint64_t Entry::nanosecondsSinceBoot() const
{
    return m_resolver.clock(m_state).nanoseconds(m_state.continuousTime);
}

std::uint64_t Entry::threadIdentifier() const
{
    if (m_state.event == EventType::SimpleDump)
        return SimpleDump{m_state.chunk->body}.thread();
    return m_state.isFirehose() ? m_state.head.thread : 0;
}

std::uint8_t Entry::recordType() const
{
    if (m_state.event == EventType::SimpleDump)
        return SimpleDump{m_state.chunk->body}.type();
    return m_state.isFirehose() ? m_state.head.type : 0;
}

Level Entry::level() const
{
    if (m_state.kind != EntryKind::Log)
        return Level::Undefined;
    switch (recordType()) {
    case 0x01: return Level::Info;
    case 0x02: return Level::Debug;
    case 0x10: return Level::Error;
    case 0x11: return Level::Fault;
    default: return Level::Notice;
    }
}

StoreCategory Entry::storeCategory() const
{
    if (!m_state.chunk)
        return StoreCategory::Metadata;
    if (m_state.isFirehose() && m_state.chunk->firehose.stream == memoryStream)
        return StoreCategory::ShortTerm;
    return categoryOfDays(timeToLive());
}

std::uint8_t Entry::timeToLive() const
{
    if (!m_state.chunk)
        return 0;
    const bool ownRules = m_state.hasFormat() && m_state.fields.timeToLive != 0;
    return ownRules ? m_state.fields.timeToLive : loadAt<std::uint8_t>(m_state.chunk->body, 12);
}

std::uint32_t Entry::recordSize() const
{
    if (!m_state.chunk)
        return 0;
    return static_cast<std::uint32_t>(m_state.isFirehose() ? m_state.data.size()
                                                           : m_state.chunk->body.size());
}

bool Entry::hasProcess() const
{
    return m_state.process != nullptr;
}
std::string_view Entry::process() const
{
    return nameOf(m_resolver.processImage(m_state));
}
std::string_view Entry::processImagePath() const
{
    return pathOf(m_resolver.processImage(m_state));
}

Uuid Entry::processImageUuid() const
{
    return m_state.process ? m_state.process->mainImage.value_or(Uuid{}) : Uuid{};
}

std::int32_t Entry::processIdentifier() const
{
    return m_state.process ? m_state.process->processIdentifier : 0;
}
std::uint32_t Entry::userIdentifier() const
{
    return m_state.process ? m_state.process->userIdentifier : 0;
}
std::string_view Entry::subsystem() const
{
    return m_resolver.subsystem(m_state).subsystem;
}
std::string_view Entry::category() const
{
    return m_resolver.subsystem(m_state).category;
}

std::uint64_t Entry::activityIdentifier() const
{
    if (m_state.event == EventType::StateDump)
        return StateDump{m_state.chunk->body}.activityIdentifier();
    if (m_state.event == EventType::ActivityCreate)
        return withoutMarker(m_state.fields.newActivity);
    return hasCurrentActivity(m_state) ? withoutMarker(m_state.fields.currentActivity) : 0;
}

std::uint64_t Entry::parentActivityIdentifier() const
{
    return m_state.kind == EntryKind::Activity ? withoutMarker(m_state.fields.otherActivity) : 0;
}

std::uint64_t Entry::creatorActivityIdentifier() const
{
    return m_state.kind == EntryKind::Activity ? withoutMarker(m_state.fields.currentActivity) : 0;
}

std::uint64_t Entry::creatorProcessUniqueIdentifier() const
{
    return m_state.kind == EntryKind::Activity ? m_state.fields.uniqueProcess : 0;
}

std::uint64_t Entry::signpostIdentifier() const
{
    return m_state.event == EventType::Signpost ? m_state.fields.signpostIdentifier : 0;
}

SignpostType Entry::signpostType() const
{
    if (m_state.event != EventType::Signpost)
        return SignpostType::Undefined;
    switch (m_state.head.type & 15) {
    case 0: return SignpostType::Event;
    case 1: return SignpostType::IntervalBegin;
    case 2: return SignpostType::IntervalEnd;
    default: return SignpostType::Undefined;
    }
}

SignpostScope Entry::signpostScope() const
{
    if (m_state.event != EventType::Signpost)
        return SignpostScope::Unknown;
    switch (m_state.head.type >> 4) {
    case 0x4: return SignpostScope::Thread;
    case 0x8: return SignpostScope::Process;
    case 0xc: return SignpostScope::System;
    default: return SignpostScope::Unknown;
    }
}

std::uint32_t Entry::traceIdentifier() const
{
    return m_state.hasFormat() ? m_state.head.reference : 0;
}
std::string_view Entry::sender() const
{
    return nameOf(m_resolver.sender(m_state));
}
std::string_view Entry::senderImagePath() const
{
    return pathOf(m_resolver.sender(m_state));
}

Uuid Entry::senderImageUuid() const
{
    const Image* image = m_resolver.sender(m_state);
    return image ? image->uuid : Uuid{};
}

std::optional<std::uint64_t> Entry::senderImageOffset() const
{
    return m_resolver.senderImageOffset(m_state);
}

std::string_view Entry::formatString() const
{
    if (!m_state.hasFormat())
        return {};
    const FormatProgram* program = m_resolver.format(m_state).program;
    return program ? program->text() : std::string_view();
}

std::string_view Entry::signpostName() const
{
    return m_resolver.signpostName(m_state);
}
std::string_view Entry::composedMessage() const
{
    return m_resolver.message(m_state);
}

} // namespace logstore
