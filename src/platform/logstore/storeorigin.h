// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace logstore {

/// Who chose the folder of a store. Links in a folder that a user chose are followed only inside
/// it; the system's own log folders may be links to anywhere.
enum class StoreOrigin : std::uint8_t { HandedOver, System };

} // namespace logstore
