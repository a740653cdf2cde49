// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/timesync.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    logstore::TimeSync times;
    times.addRecords(logstore::Bytes(data, size));
    // The first record, where it is a boot's, names the boot at this place.
    constexpr std::size_t bootAt = 8;
    const auto boot = logstore::loadAt<logstore::Uuid>(logstore::Bytes(data, size), bootAt);
    if (const auto* known = times.boot(boot)) {
        const logstore::BootClock clock = known->clock(boot);
        (void)clock.wallRange(0, UINT64_MAX);
    }
    return 0;
}
