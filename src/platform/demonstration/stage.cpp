// SPDX-License-Identifier: MIT
#include "platform/demonstration/stage.h"

#include <utility>

namespace demonstration {

using namespace logstore::writer;

namespace {

constexpr std::uint8_t daysOfErrors = 14;
constexpr std::uint8_t daysOfDumps = 3;
constexpr std::uint32_t firstUser = 501;
constexpr std::uint32_t persona = 1000; ///< of the user's records, where their process has none

Keep keepOf(std::uint8_t type)
{
    switch (type) {
    case DebugMessage: return Keep::HighVolume;
    case ErrorMessage:
    case FaultMessage: return Keep::Special;
    default: return Keep::Persist;
    }
}

} // namespace

std::uint64_t Stage::chance(std::uint64_t limit)
{
    m_chance = m_chance * 6364136223846793005 + 1442695040888963407;
    return (m_chance >> 33) % limit;
}

Record Stage::record(RecordKind kind, const Voice& voice, std::string_view format)
{
    Process& process = m_cast.process(voice.role);
    Record result{.kind = kind};
    result.format = m_cast.format(voice, format);
    result.thread = 0x1000 + static_cast<std::uint64_t>(voice.role) * 0x40 + chance(4);
    const bool hasSubsystem = !voice.subsystem.empty() || !voice.category.empty();
    if (hasSubsystem && (kind == RecordKind::Log || kind == RecordKind::Signpost))
        result.subsystem = process.subsystem(voice.subsystem, voice.category);
    if (process.user == firstUser) {
        result.persona = persona;
        result.holdsPersona = !process.hasPersona();
    }
    return result;
}

void Stage::add(std::int64_t time, const Voice& voice, Keep keep, decltype(Event::what) what)
{
    m_events.push_back({time, &m_cast.process(voice.role), keep, std::move(what)});
}

void Stage::say(std::int64_t time,
                const Voice& voice,
                std::uint8_t type,
                std::string_view format,
                Items items,
                std::uint64_t activity)
{
    Record message = record(RecordKind::Log, voice, format);
    message.type = type;
    message.items = std::move(items);
    message.activity = activity;
    if (keepOf(type) == Keep::Special)
        message.timeToLive = daysOfErrors;
    add(time, voice, keepOf(type), std::move(message));
}

std::uint64_t Stage::beginActivity(std::int64_t time,
                                   const Voice& voice,
                                   std::string_view name,
                                   std::uint64_t parent)
{
    Record activity = record(RecordKind::Activity, voice, name);
    activity.type = CreateActivity;
    activity.newActivity = newIdentifier();
    activity.activity = parent;
    activity.parentActivity = parent;
    activity.creator = static_cast<std::uint64_t>(m_cast.process(voice.role).pid);
    const std::uint64_t identifier = activity.newActivity;
    add(time, voice, Keep::Persist, std::move(activity));
    return identifier;
}

void Stage::userAction(std::int64_t time,
                       const Voice& voice,
                       std::string_view name,
                       std::uint64_t activity)
{
    Record action = record(RecordKind::Activity, voice, name);
    action.type = UserAction;
    action.activity = activity;
    add(time, voice, Keep::Persist, std::move(action));
}

void Stage::signpost(std::int64_t time,
                     const Voice& voice,
                     std::uint8_t type,
                     std::uint64_t identifier,
                     std::string_view name,
                     std::string_view format,
                     Items items)
{
    Record signpost = record(RecordKind::Signpost, voice, format);
    signpost.type = type;
    signpost.signpost = identifier;
    signpost.name = m_cast.name(voice, name);
    signpost.items = std::move(items);
    signpost.timeToLive = 1;
    add(time, voice, Keep::Signpost, std::move(signpost));
}

void Stage::trace(std::int64_t time, const Voice& voice, std::string_view format, Items items)
{
    Record trace = record(RecordKind::Trace, voice, format);
    trace.items = std::move(items);
    add(time, voice, Keep::Persist, std::move(trace));
}

void Stage::lose(std::int64_t time, const Voice& voice, std::uint64_t count)
{
    Record loss{.kind = RecordKind::Loss,
                .thread = 0x1000 + static_cast<std::uint64_t>(voice.role) * 0x40};
    loss.lost.count = count;
    add(time, voice, Keep::Persist, std::move(loss));
}

void Stage::dumpState(std::int64_t time,
                      const Voice& voice,
                      std::string_view title,
                      std::string_view propertyList)
{
    StateDump dump{.timeToLive = daysOfDumps};
    dump.sender = m_cast.image(voice);
    dump.title = title;
    dump.data.assign(propertyList.begin(), propertyList.end());
    add(time, voice, Keep::Special, std::move(dump));
}

void Stage::dumpMessage(std::int64_t time,
                        const Voice& voice,
                        std::uint8_t type,
                        std::string_view message)
{
    SimpleDump dump{.timeToLive = daysOfDumps, .type = type, .thread = 0x1000};
    dump.sender = m_cast.image(voice);
    dump.sharedCache = m_cast.sharedCache().uuid;
    dump.subsystem = voice.subsystem;
    dump.message = message;
    add(time, voice, Keep::Special, std::move(dump));
}

} // namespace demonstration
