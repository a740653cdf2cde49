// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/firehose.h"

#include <algorithm>

namespace logstore::writer {

namespace {

constexpr std::size_t publicStart = 16; ///< where the public size counts from
constexpr std::uint8_t unusedRoom = 0xee;

std::uint64_t baseTimeOf(const Firehose& firehose)
{
    if (firehose.baseTime)
        return *firehose.baseTime;
    const auto earliest =
        std::min_element(firehose.records.begin(), firehose.records.end(),
                         [](const Record& a, const Record& b) { return a.time < b.time; });
    return earliest == firehose.records.end() ? 0 : earliest->time;
}

std::vector<RecordBytes> builtRecords(const Firehose& firehose, std::uint64_t baseTime)
{
    std::vector<RecordBytes> built;
    for (const Record& record : firehose.records)
        built.push_back(recordBytes(record, baseTime));
    return built;
}

/// The private data of all records, as it stands at the end of the page.
Bytes privateArea(const std::vector<RecordBytes>& records)
{
    ByteBuilder area;
    for (const RecordBytes& record : records)
        area.bytes(record.privateData);
    return area.take();
}

void appendRecords(ByteBuilder& out,
                   const std::vector<RecordBytes>& records,
                   std::size_t virtualOffset)
{
    for (const RecordBytes& record : records) {
        const std::size_t start = out.size();
        out.bytes(record.bytes).align();
        if (record.privateOffsetAt != 0)
            out.put(start + record.privateOffsetAt, static_cast<std::uint16_t>(virtualOffset));
        virtualOffset += record.privateData.size();
    }
}

} // namespace

RecordRoom roomOf(const Record& record)
{
    const RecordBytes built = recordBytes(record, record.time);
    return {(built.bytes.size() + 7) / 8 * 8, built.privateData.size()};
}

Bytes body(const Firehose& firehose)
{
    const std::uint64_t baseTime = baseTimeOf(firehose);
    const auto records = builtRecords(firehose, baseTime);
    const Bytes secrets = privateArea(records);
    const std::size_t virtualOffset = firehosePageSize - std::min(secrets.size(), firehosePageSize);

    ByteBuilder out;
    out.u64(firehose.process.first).u32(firehose.process.second).u8(firehose.timeToLive);
    out.u8(firehose.collapsed ? 1 : 0).u16(0);
    out.u16(0).u16(static_cast<std::uint16_t>(virtualOffset)).u16(0).u8(firehose.stream).u8(1);
    out.u64(baseTime);
    appendRecords(out, records, virtualOffset);
    const std::size_t publicSize = out.size() - publicStart;
    out.put(publicStart, static_cast<std::uint16_t>(publicSize));
    if (!firehose.collapsed && publicSize < virtualOffset)
        out.bytes(Bytes(virtualOffset - publicSize, unusedRoom));
    out.bytes(secrets);

    Bytes bytes = out.take();
    if (firehose.edit)
        firehose.edit(bytes);
    return bytes;
}

} // namespace logstore::writer
