// SPDX-License-Identifier: MIT
#include "support/entryjson.h"

namespace {

using logstore::EntryKind;
using logstore::EventType;

std::string_view kindName(EntryKind kind)
{
    switch (kind) {
    case EntryKind::Log: return "log";
    case EntryKind::Activity: return "activity";
    case EntryKind::Boundary: return "boundary";
    case EntryKind::Signpost: return "signpost";
    case EntryKind::Other: break;
    }
    return "other";
}

std::string_view eventName(EventType event)
{
    switch (event) {
    case EventType::Log: return "log";
    case EventType::Trace: return "trace";
    case EventType::SimpleDump: return "simple";
    case EventType::ActivityCreate: return "activity";
    case EventType::UserAction: return "useraction";
    case EventType::Signpost: return "signpost";
    case EventType::TimeSync: return "timesync";
    case EventType::Loss: return "loss";
    case EventType::StateDump: break;
    }
    return "state";
}

} // namespace

void writeEntry(JsonLine& line, std::uint64_t index, const logstore::Entry& entry)
{
    line.number("index", index);
    line.text("kind", kindName(entry.kind()));
    line.text("event", eventName(entry.event()));
    line.number("time", entry.time());
    line.number("continuousTime", entry.continuousTime());
    line.text("bootUUID", entry.bootUuid().text());
    if (entry.kind() == EntryKind::Log)
        line.number("level", static_cast<int>(entry.level()));
    else
        line.null("level");
    line.text("category", entry.category());
    line.text("subsystem", entry.subsystem());
    line.text("process", entry.process());
    line.text("processImagePath", entry.processImagePath());
    line.number("pid", entry.processIdentifier());
    line.text("sender", entry.sender());
    line.text("senderImagePath", entry.senderImagePath());
    line.number("threadIdentifier", entry.threadIdentifier());
    line.number("activityIdentifier", entry.activityIdentifier());
    line.number("parentActivityIdentifier", entry.parentActivityIdentifier());
    if (entry.kind() == EntryKind::Signpost) {
        line.number("signpostIdentifier", entry.signpostIdentifier());
        line.text("signpostName", entry.signpostName());
        line.number("signpostType", static_cast<int>(entry.signpostType()));
    } else {
        line.null("signpostIdentifier");
        line.null("signpostName");
        line.null("signpostType");
    }
    line.number("storeCategory", static_cast<int>(entry.storeCategory()));
    line.text("formatString", entry.formatString());
    line.text("composedMessage", entry.composedMessage());
}
