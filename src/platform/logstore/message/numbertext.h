// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace logstore {

/// Ten characters as ls shows them.
void appendFileMode(std::string& out, std::uint64_t mode);

/// The units of a quantity, each so many times as large as the one before it.
struct UnitScale
{
    std::uint64_t step;
    std::string_view base;
    std::array<std::string_view, 6> units;
};

inline constexpr UnitScale byteUnits{1000, " bytes", {" kB", " MB", " GB", " TB", " PB", " EB"}};
inline constexpr UnitScale binaryByteUnits{
    1024, " bytes", {" KiB", " MiB", " GiB", " TiB", " PiB", " EiB"}};
inline constexpr UnitScale bitRateUnits{
    1000, " bps", {" kbps", " Mbps", " Gbps", " Tbps", " Pbps", " Ebps"}};
inline constexpr UnitScale binaryBitRateUnits{
    1024, " bps", {" Kibps", " Mibps", " Gibps", " Tibps", " Pibps", " Eibps"}};

/// The number in the largest unit that it fills, with three significant digits.
void appendScaled(std::string& out, std::uint64_t number, const UnitScale& scale);

} // namespace logstore
