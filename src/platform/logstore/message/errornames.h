// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace logstore {

// What macOS calls its errors and signals.

/// Appends "Broken pipe" for 32; for an unknown number, that it is unknown.
void appendErrorText(std::string& out, std::int64_t number);

/// Appends "(os/kern) failure" for 5.
void appendMachErrorText(std::string& out, std::uint32_t code);

struct SignalName
{
    std::string_view name; ///< "segv"
    std::string_view text; ///< "Segmentation fault"
};

/// The signal's name, or null for a number that is none.
const SignalName* signalName(std::int64_t number);

} // namespace logstore
