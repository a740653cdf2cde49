// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/oversize.h"

namespace logstore::writer {

Bytes body(const Oversize& oversize)
{
    const ItemBytes items = itemBytes(oversize.items, oversize.backtrace);
    ByteBuilder out;
    out.u64(oversize.process.first).u32(oversize.process.second).u8(oversize.timeToLive).zeros(3);
    out.u64(oversize.time).u32(oversize.reference);
    out.u16(static_cast<std::uint16_t>(items.publicData.size()));
    out.u16(static_cast<std::uint16_t>(items.privateData.size()));
    Bytes bytes = out.bytes(items.publicData).bytes(items.privateData).take();
    if (oversize.edit)
        oversize.edit(bytes);
    return bytes;
}

} // namespace logstore::writer
