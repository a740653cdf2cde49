// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"

#include <algorithm>
#include <string_view>

namespace logstore::writer {

/// Where the text stands among strings that each end with a zero byte; it is appended when it is
/// not there.
inline std::size_t placeOf(std::string_view text, Bytes& strings)
{
    const Bytes wanted = ByteBuilder().cstr(text).take();
    for (auto at = strings.begin(); at != strings.end();) {
        const auto end = std::find(at, strings.end(), 0) + 1;
        if (std::equal(at, end, wanted.begin(), wanted.end()))
            return static_cast<std::size_t>(at - strings.begin());
        at = end;
    }
    strings.insert(strings.end(), wanted.begin(), wanted.end());
    return strings.size() - wanted.size();
}

} // namespace logstore::writer
