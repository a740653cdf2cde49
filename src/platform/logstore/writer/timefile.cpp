// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/timefile.h"

namespace logstore::writer {

Bytes timeFileBytes(const std::vector<Boot>& boots)
{
    ByteBuilder out;
    for (const Boot& boot : boots) {
        out.u16(0xbbb0).u16(48).u32(0).uuid(boot.uuid).u32(boot.numerator).u32(boot.denominator);
        out.i64(boot.wallTime).i32(0).u32(0);
        for (const Sync& sync : boot.syncs) {
            out.u16(0x7354).u16(32).u32(0).u64(sync.continuousTime).i64(sync.wallTime);
            out.i32(sync.zone).u32(sync.daylightSaving ? 1 : 0);
        }
    }
    return out.take();
}

} // namespace logstore::writer
