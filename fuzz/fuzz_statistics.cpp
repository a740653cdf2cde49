// SPDX-License-Identifier: MIT
#include "tools/logstatistics.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (!text.isValidUtf8())
        return 0;
    for (const auto form : {LogStatistics::Form::Text, LogStatistics::Form::Csv})
        LogStatistics(form).analyseText(text);
    return 0;
}
