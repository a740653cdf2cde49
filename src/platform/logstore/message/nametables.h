// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace logstore {

/// Appends "Broken pipe" for 32; for an unknown number, that it is unknown.
void appendErrorText(std::string& out, std::int64_t number);

// Other names that the system gives to numbers in messages. All answers are empty for unknown
// numbers.

std::string_view signalName(std::uint64_t number); ///< "segv" for 11
std::string_view signalText(std::uint64_t number); ///< "Segmentation fault" for 11

enum class NameTable : std::uint8_t {
    IoMessage,
    SqliteResult,
    DnsRecordType,
    DirectoryError,
    LocationAuthorization,
    LocationReachability,
    LocationSubHarvester,
    DnsNegativeReason,
    DnsProtocol,
    DirectoryIdType
};

std::string_view tableName(NameTable table, std::uint64_t number);

} // namespace logstore
