// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/items.h"

#include <optional>
#include <string>
#include <string_view>

namespace logstore {

struct Conversion;

enum class DecorationKind : std::uint8_t {
    LowerCaseBool,
    UpperCaseBool,
    ErrorNumber,
    FileMode,
    Signal,
    Time,
    TimeWithMicroseconds,
    TimeWithNanoseconds,
    ByteCount,
    BinaryByteCount,
    BitRate,
    BinaryBitRate,
    Uuid,
    Ipv4Address,
    Ipv6Address,
    SocketAddress,
    MdnsIpAddress,
    MdnsMacAddress,
    MdnsDomainName,
    LocationAuthorization,
    LocationReachability,
    LocationSubHarvester,
    LocationIoMessage,
    LocationSqliteResult,
    LocationEscape,
    LocationClientManagerState,
    LocationManagerState,
    LocationDaemonStatus,
    MdnsYesNo,
    MdnsAcceptable,
    MdnsAddRemove,
    MdnsRecordType,
    MdnsNegativeReason,
    MdnsProtocol,
    MdnsAddressOptions,
    MdnsCounts,
    MdnsIdFlags,
    MdnsHeader,
    DirectoryIdType,
    DirectoryError,
    DirectoryMemberDetails,
    DirectorySid,
    Signpost
};

/// A word between the braces of a conversion that changes how its argument is shown.
struct Decoration
{
    DecorationKind kind;
    std::string_view label; ///< of Signpost: the part before the colon
    std::string_view key;   ///< of Signpost: the part after it
};

/// The decoration of that name (trimmed), or nothing for one without effect. Names are compared
/// with case; a "builtin:" in front does not count.
std::optional<Decoration> decorationNamed(std::string_view name);

/// Appends the argument as the decoration shows it; `precision` is the one in force, for values
/// that are shown as their letter shows them. Returns false, having written nothing, when the
/// decoration does not apply to an argument of this kind.
bool appendDecorated(std::string& out,
                     const Decoration& decoration,
                     const Conversion& conversion,
                     const Item& item,
                     std::int32_t precision);

} // namespace logstore
