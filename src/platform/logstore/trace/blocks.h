// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <vector>

namespace logstore {

/// Unpacks the blocks of a chunk set's body into `out`, replacing what was there. A damaged block
/// ends the output at what came before it.
void unpackBlocks(Bytes body, std::vector<std::uint8_t>& out);

} // namespace logstore
