// SPDX-License-Identifier: MIT
#pragma once

#include "platform/demonstration/cast.h"
#include "platform/logstore/writer/tracefile.h"

#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

namespace demonstration {

/// The folder of the log store that keeps an event.
enum class Keep : std::uint8_t { Persist, Special, Signpost, HighVolume, Live };

/// Something that happened at a wall time (nanoseconds since 1970). Its record has no time yet.
struct Event
{
    std::int64_t time = 0;
    const logstore::writer::Process* process = nullptr;
    Keep keep = Keep::Persist;
    std::
        variant<logstore::writer::Record, logstore::writer::StateDump, logstore::writer::SimpleDump>
            what{};
};

/// Collects the events of scenes.
class Stage
{
public:
    using Items = std::vector<logstore::writer::Item>;

    explicit Stage(Cast& cast) : m_cast(cast) {}

    void say(std::int64_t time,
             const Voice& voice,
             std::uint8_t type,
             std::string_view format,
             Items items = {},
             std::uint64_t activity = 0);
    /// Returns the new activity's identifier.
    std::uint64_t beginActivity(std::int64_t time,
                                const Voice& voice,
                                std::string_view name,
                                std::uint64_t parent = 0);
    void userAction(std::int64_t time,
                    const Voice& voice,
                    std::string_view name,
                    std::uint64_t activity);
    void signpost(std::int64_t time,
                  const Voice& voice,
                  std::uint8_t type,
                  std::uint64_t identifier,
                  std::string_view name,
                  std::string_view format,
                  Items items = {});
    void trace(std::int64_t time, const Voice& voice, std::string_view format, Items items);
    void lose(std::int64_t time, const Voice& voice, std::uint64_t count);
    void dumpState(std::int64_t time,
                   const Voice& voice,
                   std::string_view title,
                   std::string_view propertyList);
    void
    dumpMessage(std::int64_t time, const Voice& voice, std::uint8_t type, std::string_view message);

    std::uint64_t newIdentifier() { return m_nextIdentifier++; }
    /// A number below `limit`; the same ones in every store.
    std::uint64_t chance(std::uint64_t limit);

    std::vector<Event>& events() { return m_events; }

private:
    logstore::writer::Record
    record(logstore::writer::RecordKind kind, const Voice& voice, std::string_view format);
    void add(std::int64_t time, const Voice& voice, Keep keep, decltype(Event::what) what);

    Cast& m_cast;
    std::vector<Event> m_events;
    std::uint64_t m_nextIdentifier = 4711;
    std::uint64_t m_chance = 1;
};

} // namespace demonstration
