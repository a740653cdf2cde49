// SPDX-License-Identifier: MIT
#include "platform/logstore/message/numbertext.h"

#include "platform/logstore/message/textoutput.h"

#include <array>

namespace logstore {

namespace {

constexpr std::array<std::string_view, 7> bytesOf1000{"B", "kB", "MB", "GB", "TB", "PB", "EB"};
constexpr std::array<std::string_view, 7> bytesOf1024{"B",   "KiB", "MiB", "GiB",
                                                      "TiB", "PiB", "EiB"};
constexpr std::array<std::string_view, 5> ratesOf1000{"bps", "kbps", "Mbps", "Gbps", "Tbps"};
constexpr std::array<std::string_view, 5> ratesOf1024{"bps", "Kibps", "Mibps", "Gibps", "Tibps"};

} // namespace

constexpr UnitScale byteUnits{1000, bytesOf1000};
constexpr UnitScale binaryByteUnits{1024, bytesOf1024};
constexpr UnitScale bitRateUnits{1000, ratesOf1000};
constexpr UnitScale binaryBitRateUnits{1024, ratesOf1024};

void appendFileMode(std::string& out, std::uint64_t mode)
{
    constexpr std::string_view types = "-pc#d#b#-#l#s#w#"; // by the upper four of sixteen bits
    std::string text(1, types[mode >> 12 & 15]);
    for (int shift = 6; shift >= 0; shift -= 3) {
        text += (mode >> shift & 4) != 0 ? 'r' : '-';
        text += (mode >> shift & 2) != 0 ? 'w' : '-';
        text += (mode >> shift & 1) != 0 ? 'x' : '-';
    }
    const auto special = [&text, mode](std::uint64_t bit, std::size_t at, char withExecute,
                                       char without) {
        if ((mode & bit) != 0)
            text[at] = text[at] == 'x' ? withExecute : without;
    };
    special(04000, 3, 's', 'S');
    special(02000, 6, 's', 'S');
    special(01000, 9, 't', 'T');
    out += text;
}

void appendScaled(std::string& out, std::uint64_t number, const UnitScale& scale)
{
    std::uint64_t rest = 0;
    std::size_t unit = 0;
    for (; number >= 1000 && unit + 1 < scale.units.size(); ++unit) {
        rest = number % scale.step;
        number /= scale.step;
    }
    // Only what the last division left counts, in hundredths that may round up to a whole one.
    const std::uint64_t hundredths = (rest * 100 + scale.step / 2) / scale.step;
    const std::uint64_t whole = number + hundredths / 100;
    const std::uint64_t part = hundredths % 100;
    appendDecimal(out, whole);
    if (part != 0 && whole < 100) {
        out += '.';
        out += static_cast<char>('0' + part / 10);
        if (whole < 10 && part % 10 != 0)
            out += static_cast<char>('0' + part % 10);
    }
    out.append(" ").append(scale.units[unit]);
}

} // namespace logstore
