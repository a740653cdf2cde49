// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace logstore {

/// Ten characters as ls shows them.
void appendFileMode(std::string& out, std::uint64_t mode);

/// The units of a quantity, each `step` times as large as the one before it.
struct UnitScale
{
    std::uint64_t step;
    std::span<const std::string_view> units;
};

extern const UnitScale byteUnits;          ///< "999 B", "4.72 kB"
extern const UnitScale binaryByteUnits;    ///< "4.61 KiB"
extern const UnitScale bitRateUnits;       ///< "123 kbps"
extern const UnitScale binaryBitRateUnits; ///< "118 Kibps"

/// The number in a unit in which it is below 1000 where there is one, with at most two digits after
/// the point.
void appendScaled(std::string& out, std::uint64_t number, const UnitScale& scale);

} // namespace logstore
