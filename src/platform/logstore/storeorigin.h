// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace logstore {

/// Whose folder a store is. Links in one that was handed over are followed only where they stay
/// inside it; the system's own log folders may be links to anywhere.
enum class StoreOrigin : std::uint8_t { HandedOver, System };

} // namespace logstore
