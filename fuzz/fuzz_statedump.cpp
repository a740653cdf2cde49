// SPDX-License-Identifier: MIT
#include "platform/logstore/message/statedump.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < logstore::StateDump::headSize)
        return 0;
    const logstore::StateDump dump{logstore::Bytes(data, size)};
    std::string message;
    dump.appendMessage(message);
    return 0;
}
