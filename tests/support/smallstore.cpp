// SPDX-License-Identifier: MIT
#include "support/smallstore.h"

using namespace logstore::writer;

namespace {

const logstore::Uuid bootUuid = *logstore::Uuid::fromText("B0075EED-0000-4000-8000-000000000001");
const logstore::Uuid imageUuid = *logstore::Uuid::fromText("C0FFEE00-0000-4000-8000-000000000002");

Header headerOf(std::int64_t bootTime)
{
    Header header;
    header.wallTime = bootTime;
    header.boot = bootUuid;
    return header;
}

} // namespace

SmallStore::SmallStore(std::int64_t bootTime) : m_bootTime(bootTime), m_layout(headerOf(bootTime))
{
    m_strings.uuid = imageUuid;
    m_strings.path = "/usr/libexec/quillond";
    m_process.key = {1, 311};
    m_process.pid = 311;
    m_process.mainImage = imageUuid;
    m_process.subsystem("org.tessel.quillon", "sync");
}

Record SmallStore::record(RecordKind kind, std::int64_t time, std::string_view format)
{
    Record record{
        .kind = kind, .time = static_cast<std::uint64_t>(time - m_bootTime), .thread = 90210};
    record.format = inMain(m_strings.offset(format));
    return record;
}

void SmallStore::log(std::int64_t time,
                     std::string_view message,
                     std::uint8_t type,
                     std::uint64_t activity)
{
    Record log = record(RecordKind::Log, time, "%{public}s");
    log.type = type;
    log.activity = activity;
    log.subsystem = 1;
    log.items = {text(message)};
    add(std::move(log));
}

void SmallStore::signpost(std::int64_t time, std::string_view name, std::uint64_t identifier)
{
    Record signpost = record(RecordKind::Signpost, time, "a signpost's message");
    signpost.type = ProcessScope | IntervalBegin;
    signpost.subsystem = 1;
    signpost.signpost = identifier;
    signpost.name = nameAt(m_strings.offset(name));
    add(std::move(signpost));
}

void SmallStore::activity(std::int64_t time,
                          std::string_view name,
                          std::uint64_t identifier,
                          std::uint64_t parent)
{
    Record activity = record(RecordKind::Activity, time, name);
    activity.type = CreateActivity;
    activity.newActivity = identifier;
    activity.parentActivity = parent;
    add(std::move(activity));
}

void SmallStore::loss(std::int64_t time, std::uint64_t count)
{
    Record loss{.kind = RecordKind::Loss, .time = static_cast<std::uint64_t>(time - m_bootTime)};
    loss.lost = {loss.time, loss.time, count};
    add(std::move(loss));
}

bool SmallStore::write(const QString& folder)
{
    StoreFiles files;
    files.add("Persist/0000000000000001.tracev3", m_layout.finish());
    files.add("0000000000000001.timesync",
              std::vector<Boot>{{bootUuid, 1, 1, m_bootTime, {Sync{0, m_bootTime}}}});
    files.add(m_strings);
    return files.write(folder.toStdString()).has_value();
}
