// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <vector>

namespace logstore {

/// Whether an LZBITMAP stream begins here, with flags that are known.
bool isLzbitmap(Bytes stream);

/// Appends to an empty `out` what an LZBITMAP stream stands for, `limit` bytes at most. False when
/// it is damaged or cut short: then `out` holds what the chunks before the damage gave.
bool unpackLzbitmap(Bytes stream, std::size_t limit, std::vector<std::uint8_t>& out);

} // namespace logstore
