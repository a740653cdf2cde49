// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace logstore {

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

/// The name that the system gives to a number in messages; empty when it has none.
std::string_view tableName(NameTable table, std::uint64_t number);

} // namespace logstore
