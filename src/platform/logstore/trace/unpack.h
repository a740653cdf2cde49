// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <vector>

namespace logstore {

/// No chunk set is unpacked to more bytes than these.
constexpr std::size_t largestUnpacked = std::size_t{64} << 20;

/// What became of a packed chunk set.
enum class Unpacked : std::uint8_t {
    Whole,
    Damaged,            ///< what came before the damage is there
    UnknownCompression, ///< nothing of it is there
};

/// Unpacks the body of a chunk set into `out`, replacing what was there. The body's own marker
/// tells the compression.
Unpacked unpackChunkSet(Bytes body, std::vector<std::uint8_t>& out);

} // namespace logstore
