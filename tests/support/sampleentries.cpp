// SPDX-License-Identifier: MIT
#include "support/sampleentries.h"

#include "model/entrylistbuilder.h"
#include "model/textcache.h"

#include <QDateTime>
#include <QTimeZone>

#include <random>

using namespace Qt::StringLiterals;

namespace {

void addOrigin(LogEntry& entry)
{
    entry.process = u"quillond"_s;
    entry.processIdentifier = u"311"_s;
    entry.sender = u"QuillonKit"_s;
    entry.threadIdentifier = u"90210"_s;
}

} // namespace

LogEntry sampleLogMessage()
{
    LogEntry entry;
    entry.type = LogMessageEntry;
    entry.date = u"2024-03-07 14:05:09.031250+0100"_s;
    entry.category = u"sync"_s;
    entry.level = u"error"_s;
    entry.subsystem = u"org.tessel.quillon"_s;
    entry.storeCategory = u"1"_s;
    entry.composedMessage = u"synchronised 3 of 4"_s;
    addOrigin(entry);
    return entry;
}

LogEntry sampleActivity()
{
    LogEntry entry;
    entry.type = ActivityEntry;
    entry.date = u"2024-03-07 14:05:10.000001+0100"_s;
    entry.activityIdentifier = u"42"_s;
    entry.parentActivityIdentifier = u"0"_s;
    entry.storeCategory = u"2"_s;
    entry.composedMessage = u"check for updates"_s;
    addOrigin(entry);
    return entry;
}

LogEntry sampleBoundary()
{
    LogEntry entry;
    entry.type = BoundaryEntry;
    entry.date = u"2024-03-07 14:05:08.000000+0100"_s;
    entry.storeCategory = u"0"_s;
    entry.composedMessage = u"=== system boot"_s;
    return entry;
}

LogEntry sampleSignpost()
{
    LogEntry entry;
    entry.type = SignpostEntry;
    entry.date = u"2024-03-07 14:05:11.500000+0100"_s;
    entry.activityIdentifier = u"0"_s;
    entry.category = u"rendering"_s;
    entry.subsystem = u"org.tessel.demo"_s;
    entry.signpostIdentifier = u"18446744073709551614"_s;
    entry.signpostName = u"layout"_s;
    entry.signpostType = u"1"_s;
    entry.storeCategory = u"3"_s;
    addOrigin(entry);
    return entry;
}

QList<LogEntry> sampleEntries()
{
    QList<LogEntry> entries{sampleBoundary(), sampleLogMessage(), sampleActivity(),
                            sampleSignpost()};
    entries[1].userNote = Text(u"look here"_s);
    return entries;
}

QList<LogEntry> manyEntries(int count)
{
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same entries in every run
    TextsByContent shared;
    const auto oneOf = [&](const char* prefix, unsigned kinds) {
        return shared(prefix + std::to_string(random() % kinds));
    };
    const std::string words =
        "connection established to service endpoint with status and flags \"ok\" ";
    QList<LogEntry> entries;
    for (int i = 0; i < count; ++i) {
        LogEntry entry = sampleLogMessage();
        const QDateTime date = QDateTime::fromMSecsSinceEpoch(1709816709000 + i, QTimeZone::utc());
        entry.date = date.toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s) + u"250+0000"_s;
        entry.category = oneOf("category-", 300);
        entry.process = oneOf("process", 200);
        entry.processIdentifier = oneOf("", 2000);
        entry.sender = oneOf("Library", 300);
        entry.subsystem = oneOf("org.example.subsystem", 200);
        entry.threadIdentifier = oneOf("", 5000);
        const std::size_t start = random() % words.size();
        entry.composedMessage =
            Text(words.substr(start) + words.substr(0, start) + std::to_string(i)
                 + (i % 20 == 0 ? "\nsecond line: déjà vu" : ""));
        entries.append(std::move(entry));
    }
    return entries;
}

QString firstDifference(const LogEntry& a, const LogEntry& b)
{
    if (a.id != b.id)
        return u"id"_s;
    if (a.type != b.type)
        return u"type"_s;
    for (const EntryMember& member : entryMembers) {
        if (member.text && !(a.*member.text == b.*member.text))
            return QString::fromUtf8(member.name.data());
    }
    return a.userNote == b.userNote ? QString() : u"userNote"_s;
}
