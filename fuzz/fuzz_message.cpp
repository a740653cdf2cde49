// SPDX-License-Identifier: MIT
#include "platform/logstore/message/renderer.h"

#include <algorithm>

/// The format string up to the first zero byte, then the arguments as a record holds them; the last
/// quarter of the input serves as private data too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const logstore::Bytes input(data, size);
    const auto zero = std::find(input.begin(), input.end(), 0);
    const auto length = static_cast<std::size_t>(zero - input.begin());
    const logstore::FormatProgram program(std::string(input.begin(), zero));
    const logstore::Bytes arguments = logstore::clipped(input, length + 1);

    logstore::Items items;
    items.read(arguments, logstore::clipped(input, size / 4 * 3));
    std::string message;
    logstore::appendMessage(message, program, items);
    items.readTrace(arguments);
    logstore::appendMessage(message, program, items);
    return 0;
}
