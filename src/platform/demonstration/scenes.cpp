// SPDX-License-Identifier: MIT
#include "platform/demonstration/scenes.h"

#include <array>
#include <string>

namespace demonstration {

using namespace logstore::writer;

namespace {

constexpr std::int64_t millisecond = 1'000'000;

constexpr Voice kernel{Role::Kernel, From::Main, {}, {}};
constexpr Voice storage{Role::Kernel, From::Extension, {}, {}};
constexpr Voice backup{Role::Backup, From::Main, "com.apple.TimeMachine", "General"};
constexpr Voice copying{Role::Backup, From::Framework, "com.apple.TimeMachine", "Copying"};
constexpr Voice agent{Role::Agent, From::Main, "org.tessel.demonstration.agent", "general"};
constexpr Voice settings{Role::Agent, From::Library, "org.tessel.demonstration.agent", "settings"};
constexpr Voice connections{Role::Network, From::Main, "org.tessel.demonstration.network",
                            "connection"};
constexpr Voice names{Role::Network, From::Library, "org.tessel.demonstration.network", "names"};
constexpr Voice rendering{Role::Window, From::Main, "org.tessel.demonstration.window", "rendering"};
constexpr Voice interest{Role::Window, From::Framework, "org.tessel.demonstration.window",
                         "PointsOfInterest"};
constexpr Voice mail{Role::Mail, From::Main, "org.tessel.demonstration.mail", "messages"};
constexpr Voice mailbox{Role::Mail, From::Framework, "org.tessel.demonstration.mail", "mailbox"};
constexpr Voice quillon{Role::Quillon, From::Main, "org.tessel.quillon", "general"};
constexpr Voice bare{Role::Agent, From::Library, {}, {}};

Item number32(std::uint64_t value)
{
    return number(static_cast<std::uint32_t>(value));
}

/// An address of the block that is set aside for examples, 192.0.2.0 to 192.0.2.255, as it lies in
/// memory.
Item documentationAddress(Stage& stage)
{
    return number(static_cast<std::uint32_t>(0x0002'00c0 | stage.chance(256) << 24));
}

template <std::size_t N>
const char* oneOf(Stage& stage, const std::array<const char*, N>& choices)
{
    return choices[stage.chance(N)];
}

void backupRun(Stage& stage, std::int64_t time)
{
    const std::uint64_t bytes = 40'000'000 + stage.chance(900'000'000);
    const std::uint64_t run = stage.beginActivity(time, backup, "Demonstration backup");
    const auto destination = text("Demonstration Disk");
    stage.say(time + 2 * millisecond, backup, DefaultMessage, "Starting automatic backup", {}, run);
    stage.say(time + 9 * millisecond, backup, InfoMessage,
              "Mounted Time Machine destination '%{public}s'", {destination}, run);
    const std::uint64_t copy =
        stage.beginActivity(time + 14 * millisecond, copying, "Copy changed items", run);
    stage.say(time + 60 * millisecond, copying, DefaultMessage,
              "Copied %{bytes}llu in %u items to '%{public}s' (%.1f%%)",
              {number(bytes), number32(stage.chance(4000)), destination,
               number(42.5 + double(stage.chance(50)))},
              copy);
    stage.say(time + 95 * millisecond, backup, DefaultMessage, "Completed backup in %.3f seconds",
              {number(0.093)}, run);
}

void backupError(Stage& stage, std::int64_t time)
{
    stage.say(time, backup, ErrorMessage,
              "Backup postponed: volume %{private}@ is not available (error %{darwin.errno}d)",
              {redacted(ItemKind::Object), number<std::int32_t>(6)});
    stage.say(time + 3 * millisecond, backup, DefaultMessage,
              "TimeMachine: next attempt in %u minutes", {number32(1 + stage.chance(60))});
}

void kernelDisk(Stage& stage, std::int64_t time)
{
    stage.say(time, storage, DefaultMessage,
              "DemonstrationStorage: disk%ds%d: %u of %u pages written back\n",
              {number<std::int32_t>(0), number<std::int32_t>(1 + int(stage.chance(4))),
               number32(stage.chance(4096)), number32(4096)});
}

void kernelTimer(Stage& stage, std::int64_t time)
{
    stage.say(time, kernel, DefaultMessage, "demonstration timer: deadline %#llx, leeway %llu ns",
              {number(stage.chance(1U << 30)), number(stage.chance(50'000))});
}

void kernelError(Stage& stage, std::int64_t time)
{
    stage.say(time, storage, ErrorMessage, "DemonstrationStorage: I/O error %d, retried %u times",
              {number<std::int32_t>(5), number32(1 + stage.chance(3))});
}

void connection(Stage& stage, std::int64_t time)
{
    const std::uint64_t activity = stage.beginActivity(time, connections, "Open connection");
    const std::uint64_t identifier = 100 + stage.chance(900);
    stage.say(time + millisecond, connections, DefaultMessage,
              "[C%llu] Connecting to %{network:in_addr}d port %hu",
              {number(identifier), documentationAddress(stage), number<std::uint32_t>(443)},
              activity);
    stage.say(time + 24 * millisecond, connections, InfoMessage,
              "[C%llu] Connected in %.2f ms, protocol %{public}s",
              {number(identifier), number(8.0 + double(stage.chance(1000)) / 100),
               text(oneOf<3>(stage, {"h2", "h3", "http/1.1"}))},
              activity);
    stage.say(time + 31 * millisecond, connections, DebugMessage, "[C%llu] Sent %zu bytes: <%.*P>",
              {number(identifier), number<std::uint64_t>(4), count(4),
               bytes(Bytes{0xca, 0xfe, 0x20, 0x26})},
              activity);
}

void connectionError(Stage& stage, std::int64_t time)
{
    const Item identifier = number(100 + stage.chance(900));
    stage.say(time, connections, ErrorMessage, "[C%llu] Connection failed with error %{errno}d",
              {identifier, number<std::int32_t>(60 + int(stage.chance(2)))});
    stage.say(time + 2 * millisecond, connections, DebugMessage,
              "[C%llu] Path: %{private, mask.hash}s",
              {identifier, maskName("hash"),
               masked(Bytes{0x1f, 0x8b, 0x42, 0x07, 0x5a, 0x90, 0x11, 0x3c, 0xd4, 0x6e, 0x27, 0x0f,
                            0xb8, 0x63, 0x9d, 0x51})});
}

void nameLookUp(Stage& stage, std::int64_t time)
{
    const Item host = text(oneOf<4>(stage, {"demonstration.example", "mail.example.org",
                                            "www.example.com", "münchen.example"}),
                           Privacy::Private);
    stage.say(time, names, DefaultMessage, "Query for %{private}s, type %{mdns:rrtype}d",
              {redacted(ItemKind::Text), number<std::int32_t>(28)});
    stage.say(time + 6 * millisecond, names, InfoMessage, "Answer for %{private}s kept for %u s",
              {host, number32(30 + stage.chance(3600))});
}

void frame(Stage& stage, std::int64_t time)
{
    const std::uint64_t identifier = stage.newIdentifier();
    stage.signpost(time, rendering, ProcessScope | IntervalBegin, identifier, "Draw frame",
                   "view %{public}s", {text(oneOf<3>(stage, {"list", "sidebar", "toolbar"}))});
    stage.signpost(time + std::int64_t(4 + stage.chance(12)) * millisecond, rendering,
                   ProcessScope | IntervalEnd, identifier, "Draw frame", "%u rows",
                   {number32(stage.chance(60))});
}

void pointOfInterest(Stage& stage, std::int64_t time)
{
    stage.signpost(time, interest, ThreadScope | SignpostEvent, stage.newIdentifier(), "Scrolled",
                   "to row %d", {number<std::int32_t>(int(stage.chance(5000)))});
    stage.say(time + millisecond, rendering, DebugMessage, "Layer tree committed in %llu µs",
              {number(stage.chance(900))});
}

void userClicks(Stage& stage, std::int64_t time)
{
    const std::uint64_t activity = stage.beginActivity(time, interest, "Handle click");
    stage.userAction(time + millisecond, interest, "Demonstration button pressed", activity);
    stage.say(time + 3 * millisecond, rendering, InfoMessage,
              "Window %{public}@ became key: %{BOOL}d",
              {object("“Démonstration”"), number<std::int32_t>(1)}, activity);
}

void mailArrives(Stage& stage, std::int64_t time)
{
    const std::uint64_t fetch = stage.beginActivity(time, mail, "Fetch mail");
    stage.say(time + 4 * millisecond, mail, DefaultMessage, "%u new messages from %{private}@",
              {number32(1 + stage.chance(9)), redacted(ItemKind::Object)}, fetch);
    stage.say(time + 8 * millisecond, mail, DefaultMessage, "Subject: %{public}@",
              {object(oneOf<5>(stage, {"Grüße aus Zürich", "Πρόγραμμα Τρίτης", "Привет, мир",
                                       "مرحبا بالعالم", "Party 🎉 on Friday 👩‍🚀"}))},
              fetch);
    const std::uint64_t index =
        stage.beginActivity(time + 11 * millisecond, mailbox, "Index messages", fetch);
    stage.say(time + 19 * millisecond, mailbox, InfoMessage, "Indexed %{uuid_t}.16P, flags %#x",
              {count(16),
               bytes(demonstrationUuid(static_cast<std::uint8_t>(stage.chance(200))).bytes),
               number32(stage.chance(256))},
              index);
}

void mailSettings(Stage& stage, std::int64_t time)
{
    stage.say(time, mailbox, DefaultMessage,
              "Mailbox settings:\n\tname = %{public}s\n\tunread = %u\n\tsynchronised = %{bool}d",
              {text("Eingang"), number32(stage.chance(40)), number<std::int32_t>(1)});
}

void longReport(Stage& stage, std::int64_t time)
{
    std::string report;
    for (int i = 1; i <= 40; ++i)
        report += "item " + std::to_string(i) + " of the demonstration report took "
                  + std::to_string(stage.chance(900)) + " ms; ";
    stage.say(time, agent, DefaultMessage, "Report: %{public}@", {object(report)});
}

void agentWork(Stage& stage, std::int64_t time)
{
    stage.say(time, agent, InfoMessage, "Checked %u of %u items",
              {number32(stage.chance(64)), number32(64)});
    stage.say(time + 5 * millisecond, agent, DebugMessage, "%s: queue depth %d, load %.2f",
              {text("demonstrationAgentMain"), number<std::int32_t>(int(stage.chance(12))),
               number(double(stage.chance(300)) / 100)});
}

void agentSettings(Stage& stage, std::int64_t time)
{
    stage.say(time, settings, DefaultMessage, "Setting %{public}s changed to %{public}@",
              {text(oneOf<3>(stage, {"interval", "appearance", "language"})),
               object(oneOf<3>(stage, {"60", "dark", "Ελληνικά"}))});
    stage.trace(time + 2 * millisecond, agent, "settings written: %d bytes, generation %llu",
                {number<std::int32_t>(int(stage.chance(2048))), number(stage.chance(1000))});
}

void agentFault(Stage& stage, std::int64_t time)
{
    stage.say(time, agent, FaultMessage, "Demonstration of a fault: %{public}s is null (%p)",
              {text("delegate"), number<std::uint64_t>(0x600000c0f000 + stage.chance(4096) * 16)});
}

void agentState(Stage& stage, std::int64_t time)
{
    stage.dumpState(time, agent, "Demonstration agent state",
                    R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>mode</key><string>idle</string><key>pending items</key><integer>3</integer>
<key>peers</key><array><string>one</string><string>two</string></array></dict></plist>)");
}

void plainMessage(Stage& stage, std::int64_t time)
{
    stage.dumpMessage(time, agent, InfoMessage,
                      "A complete message of the demonstration, written without a format string");
    stage.say(time + millisecond, bare, DefaultMessage,
              "This message of libdemonstration has no subsystem");
}

void lostMessages(Stage& stage, std::int64_t time)
{
    stage.lose(time, connections, 1 + stage.chance(20));
}

void quillonWrites(Stage& stage, std::int64_t time)
{
    static constexpr std::array<const char*, 4> words{"a note", "reading the log", "spaß 🖋",
                                                      "quill and ink"};
    stage.say(time, quillon, DefaultMessage, "quillon wrote: %{public}s",
              {text(oneOf(stage, words))});
}

void quillonFails(Stage& stage, std::int64_t time)
{
    stage.say(time, quillon, ErrorMessage, "quillon wrote an error on purpose, number %d",
              {number<std::int32_t>(int(stage.chance(100)))});
}

constexpr auto deck = std::to_array<Scene>({
    kernelTimer, agentWork,    backupRun,    connection,    frame,           quillonWrites,
    mailArrives, kernelDisk,   nameLookUp,   frame,         agentWork,       pointOfInterest,
    backupError, connection,   kernelTimer,  agentSettings, userClicks,      frame,
    longReport,  kernelError,  mailSettings, agentFault,    connection,      quillonFails,
    agentState,  plainMessage, backupRun,    lostMessages,  connectionError, frame,
    nameLookUp,  mailArrives,
});

} // namespace

std::span<const Scene> scenes()
{
    return deck;
}

void startUp(Stage& stage, std::int64_t time)
{
    stage.say(time, kernel, DefaultMessage, "Demonstration kernel, version %{public}s",
              {text("26.0.0")});
    stage.say(time + 20 * millisecond, storage, DefaultMessage,
              "DemonstrationStorage: started, %u disks", {number32(1)});
    stage.say(time + 900 * millisecond, agent, DefaultMessage,
              "Demonstration agent started for user %{public}s", {text("demonstration")});
    stage.say(time + 950 * millisecond, connections, DefaultMessage,
              "Network of the demonstration is up");
}

} // namespace demonstration
