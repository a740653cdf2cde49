// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/statedump.h"

namespace logstore::writer {

namespace {

constexpr std::size_t nameSize = 64;

} // namespace

Bytes body(const StateDump& dump)
{
    ByteBuilder out;
    out.u64(dump.process.first).u32(dump.process.second).u8(dump.timeToLive).zeros(3);
    out.u64(dump.time)
        .u64(dump.activity == 0 ? 0 : dump.activity | activityMarker)
        .uuid(dump.sender);
    out.u32(dump.dataType).u32(static_cast<std::uint32_t>(dump.data.size()));
    out.field(dump.decoderLibrary, nameSize)
        .field(dump.decoderType, nameSize)
        .field(dump.title, nameSize);
    Bytes bytes = out.bytes(dump.data).take();
    if (dump.edit)
        dump.edit(bytes);
    return bytes;
}

} // namespace logstore::writer
