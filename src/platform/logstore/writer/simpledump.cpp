// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/simpledump.h"

namespace logstore::writer {

Bytes body(const SimpleDump& dump)
{
    ByteBuilder out;
    out.u64(dump.process.first).u32(dump.process.second).u8(dump.timeToLive).u8(dump.type).u16(0);
    out.u64(dump.time)
        .u64(dump.thread)
        .u64(dump.address)
        .uuid(dump.sender)
        .uuid(dump.sharedCache)
        .u32(0);
    out.u32(static_cast<std::uint32_t>(dump.subsystem.size() + 1));
    out.u32(static_cast<std::uint32_t>(dump.message.size() + 1));
    Bytes bytes = out.cstr(dump.subsystem).cstr(dump.message).take();
    if (dump.edit)
        dump.edit(bytes);
    return bytes;
}

} // namespace logstore::writer
