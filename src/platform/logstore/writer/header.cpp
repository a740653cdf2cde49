// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/header.h"

#include "platform/base/timeunits.h"
namespace logstore::writer {

Bytes body(const Header& header)
{
    constexpr std::uint32_t is64Bit = 1;
    ByteBuilder out;
    out.u32(header.numerator).u32(header.denominator).u64(header.continuousTime);
    out.i64(header.wallTime / nanosecondsPerSecond)
        .i32(static_cast<std::int32_t>(header.wallTime % nanosecondsPerSecond
                                       / nanosecondsPerMicrosecond));
    out.i32(header.zone).u32(header.daylightSaving ? 1 : 0).u32(is64Bit);
    out.u32(0x6100).u32(8).u64(header.continuousTime);
    out.u32(0x6101).u32(0x38).u32(0).u32(0).field(header.build, 16).field(header.model, 32);
    out.u32(0x6102).u32(0x18).uuid(header.boot).i32(header.daemon).i32(0);
    out.u32(0x6103).u32(0x30).field(header.zoneFile, 48);
    Bytes bytes = out.take();
    if (header.edit)
        header.edit(bytes);
    return bytes;
}

} // namespace logstore::writer
