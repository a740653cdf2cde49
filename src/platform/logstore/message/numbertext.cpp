// SPDX-License-Identifier: MIT
#include "platform/logstore/message/numbertext.h"

#include "platform/logstore/message/textoutput.h"

namespace logstore {

void appendFileMode(std::string& out, std::uint64_t mode)
{
    constexpr std::string_view types = "?pc?d?b?-?l?s?w?"; // by the upper four of sixteen bits
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
    if (number < scale.step) {
        appendDecimal(out, number);
        out += scale.base;
        return;
    }
    auto value = static_cast<double>(number);
    const auto step = static_cast<double>(scale.step);
    std::size_t unit = 0;
    for (value /= step; value >= step && unit + 1 < scale.units.size(); ++unit)
        value /= step;
    constexpr double fourDigits = 999.5; // rounds to 1000
    if (value >= fourDigits)
        appendFormatted(out, "%.0f", value);
    else
        appendFormatted(out, "%.3g", value);
    out += scale.units[unit];
}

} // namespace logstore
