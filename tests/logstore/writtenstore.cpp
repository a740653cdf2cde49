// SPDX-License-Identifier: MIT
#include "logstore/writtenstore.h"

using namespace logstore::writer;
using logstore::Entry;
using logstore::Uuid;

namespace {

QString qString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

Seen seen(const Entry& entry)
{
    Seen result;
    result.kind = entry.kind();
    result.event = entry.event();
    result.time = entry.time();
    result.continuousTime = entry.continuousTime();
    result.level = entry.level();
    result.storeCategory = entry.storeCategory();
    result.signpostType = entry.signpostType();
    result.processIdentifier = entry.processIdentifier();
    result.thread = entry.threadIdentifier();
    result.activity = entry.activityIdentifier();
    result.parentActivity = entry.parentActivityIdentifier();
    result.signpost = entry.signpostIdentifier();
    result.process = qString(entry.process());
    result.processPath = qString(entry.processImagePath());
    result.sender = qString(entry.sender());
    result.senderPath = qString(entry.senderImagePath());
    result.subsystem = qString(entry.subsystem());
    result.category = qString(entry.category());
    result.signpostName = qString(entry.signpostName());
    result.format = qString(entry.formatString());
    result.message = qString(entry.composedMessage());
    return result;
}

} // namespace

Uuid testUuid(std::uint8_t number)
{
    Uuid uuid;
    uuid.bytes.fill(number);
    return uuid;
}

QString lines(std::initializer_list<const char*> texts)
{
    QStringList result;
    for (const char* text : texts)
        result += utf8(text);
    return result.join(QLatin1Char('\n'));
}

Seen only(WrittenStore& store, const Record& record)
{
    store.addRecords({record});
    const auto entries = store.entries();
    return entries.size() == 1 ? entries[0] : Seen{};
}

WrittenStore::WrittenStore()
{
    boot.uuid = testUuid(0xb0);
    boot.wallTime = bootTime;
    image.uuid = testUuid(0x11);
    image.path = "/usr/bin/tester";
    cache.uuid = testUuid(0xcc);
    cache.images.push_back({testUuid(0x21), "/usr/lib/libfirst.dylib", 0x1000'0000, 0x10000});
    process.key = {77, 1077};
    process.pid = 77;
    process.user = 501;
    process.mainImage = image.uuid;
    process.sharedCache = cache.uuid;
}

Record WrittenStore::message(std::uint64_t time, std::string_view text)
{
    Record record{.time = time, .thread = 5};
    record.format = inMain(image.offset(text));
    return record;
}

Firehose WrittenStore::page(std::vector<Record> records) const
{
    Firehose result{.process = process.key};
    result.records = std::move(records);
    return result;
}

TraceFile WrittenStore::trace(std::vector<ChunkSet> sets) const
{
    TraceFile file;
    file.header.boot = boot.uuid;
    file.header.wallTime = bootTime;
    file.sections.push_back({{}, {process}, std::move(sets), {}});
    return file;
}

void WrittenStore::addChunks(std::vector<Chunk> chunks)
{
    files.add(persist, trace({ChunkSet{std::move(chunks), {}, true, {}, {}}}));
}

void WrittenStore::addRecords(std::vector<Record> records)
{
    addChunks({page(std::move(records))});
}

std::filesystem::path WrittenStore::write()
{
    StoreFiles whole = files;
    StoreFiles usual{files.layout, {}};
    usual.add(image);
    usual.add(cache);
    usual.add("0000000000000001.timesync", {boot});
    whole.files.merge(usual.files);
    const std::filesystem::path root =
        m_folder.filePath(QStringLiteral("test.logarchive")).toStdString();
    const auto written = whole.write(root);
    if (!written)
        qFatal("%s", written.error().description.c_str());
    return root;
}

std::vector<Seen> WrittenStore::all(std::int64_t from)
{
    const auto store = logstore::Store::open(write());
    if (!store)
        qFatal("%s", store.error().name.c_str());
    std::vector<Seen> result;
    auto stream = store->entries(from);
    while (const Entry* entry = stream.next())
        result.push_back(seen(*entry));
    return result;
}

std::vector<Seen> WrittenStore::entries(std::int64_t from)
{
    std::vector<Seen> result = all(from);
    std::erase_if(result,
                  [](const Seen& each) { return each.kind == logstore::EntryKind::Boundary; });
    return result;
}

QString WrittenStore::messages()
{
    QStringList texts;
    for (const Seen& each : entries())
        texts += each.message;
    return texts.join(QLatin1Char('\n'));
}
