// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/record.h"

namespace logstore {

/// How well the fields of a record go with what follows them.
enum class Fit : std::uint8_t {
    None,
    Possible, ///< the items are sound
    Exact     ///< and their values end where the data end
};

/// `spare` bytes, or none, may be left over at the end. Not for trace and loss records.
Fit fitOf(const RecordHead& head, const RecordFields& fields, std::size_t spare);

} // namespace logstore
