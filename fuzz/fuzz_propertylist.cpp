// SPDX-License-Identifier: MIT
#include "platform/propertylist.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const auto list = propertyListFrom(bytes))
        (void)propertyListXml(*list);
    return 0;
}
