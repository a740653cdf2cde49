// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/record.h"

namespace logstore::writer {

namespace {

enum Flag : std::uint16_t {
    HasActivity = 0x0001,
    HasUniqueProcess = 0x0010,
    HasLargeOffset = 0x0020,
    HasPersona = 0x0040,
    HasPrivateRange = 0x0100,
    HasOtherActivityOrSubsystem = 0x0200,
    HasTimeToLive = 0x0400,
    HasOversize = 0x0800,
    HasBacktrace = 0x1000,
    HasName = 0x8000
};

constexpr std::size_t headSize = 24;

bool isMessage(const Record& record)
{
    return record.kind == RecordKind::Log || record.kind == RecordKind::Signpost;
}

std::uint16_t activityFlags(const Record& record)
{
    unsigned flags = 0;
    if (record.creator != 0)
        flags |= HasUniqueProcess;
    if (record.parentActivity != 0)
        flags |= HasOtherActivityOrSubsystem;
    return static_cast<std::uint16_t>(flags);
}

std::uint16_t messageFlags(const Record& record, const ItemBytes& items)
{
    unsigned flags = 0;
    if (!items.privateData.empty() && !record.oversize)
        flags |= HasPrivateRange;
    if (record.subsystem)
        flags |= HasOtherActivityOrSubsystem;
    if (record.timeToLive != 0)
        flags |= HasTimeToLive;
    if (record.oversize)
        flags |= HasOversize;
    if (!record.backtrace.images.empty())
        flags |= HasBacktrace;
    if (record.kind == RecordKind::Signpost && record.name)
        flags |= HasName;
    return static_cast<std::uint16_t>(flags);
}

std::uint16_t flagsOf(const Record& record, const ItemBytes& items)
{
    if (record.kind == RecordKind::Loss)
        return 0;
    auto flags = static_cast<unsigned>(record.format.source);
    if (record.format.largeOffset)
        flags |= HasLargeOffset;
    if (record.activity != 0 && record.kind != RecordKind::Trace)
        flags |= HasActivity;
    if (record.persona && record.kind != RecordKind::Trace)
        flags |= HasPersona;
    if (record.kind == RecordKind::Activity)
        flags |= activityFlags(record);
    if (isMessage(record))
        flags |= messageFlags(record, items);
    return static_cast<std::uint16_t>(flags);
}

void appendActivityFields(ByteBuilder& out, const Record& record, std::uint16_t flags)
{
    if (flags & HasUniqueProcess)
        out.u64(record.creator);
    if (flags & HasOtherActivityOrSubsystem)
        out.u64(record.parentActivity | activityMarker);
    if (record.type != UserAction)
        out.u64(record.newActivity | activityMarker);
}

void appendStringFields(ByteBuilder& out, const StringReference& format)
{
    out.u32(format.addressLow);
    if (format.largeOffset)
        out.u16(*format.largeOffset);
    if (format.source == StringSource::Absolute)
        out.u16(format.addressHigh);
    if (format.source == StringSource::Relative)
        out.uuid(format.image);
    if (format.source == StringSource::LargeSharedCache)
        out.u16(format.largeCache);
}

void appendSignpostFields(ByteBuilder& out, const Record& record)
{
    out.u64(record.signpost);
    if (!record.name)
        return;
    out.u32(record.name->reference);
    if (record.format.largeOffset || record.format.source == StringSource::LargeSharedCache)
        out.u16(record.name->upper);
}

void appendMessageFields(ByteBuilder& out, const Record& record, const ItemBytes& items)
{
    if (record.subsystem)
        out.u16(*record.subsystem);
    if (record.timeToLive != 0)
        out.u8(record.timeToLive);
    if (record.oversize)
        out.u32(*record.oversize);
    if (record.kind == RecordKind::Signpost)
        appendSignpostFields(out, record);
    if (!record.oversize)
        out.bytes(items.publicData);
}

/// Appends the record's data; returns where the virtual offset of its private data goes.
std::size_t
appendData(ByteBuilder& out, const Record& record, const ItemBytes& items, std::uint16_t flags)
{
    if (record.kind == RecordKind::Loss) {
        out.u64(record.lost.first).u64(record.lost.last).u64(record.lost.count);
        return 0;
    }
    std::size_t privateOffsetAt = 0;
    if (flags & HasActivity)
        out.u64(record.activity | activityMarker);
    if ((flags & HasPersona) && record.holdsPersona)
        out.u32(*record.persona);
    if (record.kind == RecordKind::Activity)
        appendActivityFields(out, record, flags);
    else if (flags & HasPrivateRange) {
        privateOffsetAt = out.size();
        out.u16(0).u16(static_cast<std::uint16_t>(items.privateData.size()));
    }
    appendStringFields(out, record.format);
    if (isMessage(record))
        appendMessageFields(out, record, items);
    if (record.kind == RecordKind::Trace)
        out.bytes(traceValueBytes(record.items));
    return privateOffsetAt;
}

} // namespace

RecordBytes recordBytes(const Record& record, std::uint64_t baseTime)
{
    ItemBytes items = isMessage(record) ? itemBytes(record.items, record.backtrace) : ItemBytes{};
    const auto flags = flagsOf(record, items);
    const std::uint64_t delta = record.time - baseTime;

    ByteBuilder out;
    out.u8(static_cast<std::uint8_t>(record.kind)).u8(record.type).u16(flags);
    out.u32(record.kind == RecordKind::Loss ? 0 : record.format.reference).u64(record.thread);
    out.u32(static_cast<std::uint32_t>(delta)).u16(static_cast<std::uint16_t>(delta >> 32)).u16(0);
    const std::size_t privateOffsetAt = appendData(out, record, items, flags);
    out.put(headSize - 2, static_cast<std::uint16_t>(out.size() - headSize));

    Bytes bytes = out.take();
    if (record.edit)
        record.edit(bytes);
    if ((flags & HasPrivateRange) == 0)
        items.privateData.clear();
    return {std::move(bytes), std::move(items.privateData), privateOffsetAt};
}

} // namespace logstore::writer
