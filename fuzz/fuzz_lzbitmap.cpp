// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/lzbitmap.h"

#include <cstdlib>

/// All flags count as known, and the output is bounded: whatever the input says, no more comes out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t limit = 100'000;
    std::vector<std::uint8_t> out;
    logstore::unpackLzbitmap({data, size}, limit, out);
    if (out.size() > limit)
        std::abort();
    return 0;
}
