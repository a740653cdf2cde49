// SPDX-License-Identifier: MIT
#include "platform/logstore/message/decoration.h"

#include <algorithm>
#include <array>

namespace logstore {

namespace {

struct NamedDecoration
{
    std::string_view name;
    DecorationKind kind;
};

using Kind = DecorationKind;

constexpr std::array names{
    NamedDecoration{"BOOL", Kind::UpperCaseBool},
    NamedDecoration{"bitrate", Kind::BitRate},
    NamedDecoration{"bool", Kind::LowerCaseBool},
    NamedDecoration{"bytes", Kind::ByteCount},
    NamedDecoration{"darwin.errno", Kind::ErrorNumber},
    NamedDecoration{"darwin.mode", Kind::FileMode},
    NamedDecoration{"darwin.signal", Kind::Signal},
    NamedDecoration{"errno", Kind::ErrorNumber},
    NamedDecoration{"iec-bitrate", Kind::BinaryBitRate},
    NamedDecoration{"iec-bytes", Kind::BinaryByteCount},
    NamedDecoration{"in6_addr", Kind::Ipv6Address},
    NamedDecoration{"in_addr", Kind::Ipv4Address},
    NamedDecoration{"location:CLClientAuthorizationStatus", Kind::LocationAuthorization},
    NamedDecoration{"location:CLDaemonStatus_Type::Reachability", Kind::LocationReachability},
    NamedDecoration{"location:CLSubHarvesterIdentifier", Kind::LocationSubHarvester},
    NamedDecoration{"location:IOMessage", Kind::LocationIoMessage},
    NamedDecoration{"location:SqliteResult", Kind::LocationSqliteResult},
    NamedDecoration{"location:_CLClientManagerStateTrackerState", Kind::LocationClientManagerState},
    NamedDecoration{"location:_CLDaemonStatusStateTrackerState", Kind::LocationDaemonStatus},
    NamedDecoration{"location:_CLLocationManagerStateTrackerState", Kind::LocationManagerState},
    NamedDecoration{"location:escape_only", Kind::LocationEscape},
    NamedDecoration{"mdns:acceptable", Kind::MdnsAcceptable},
    NamedDecoration{"mdns:addrmv", Kind::MdnsAddRemove},
    NamedDecoration{"mdns:dns.counts", Kind::MdnsCounts},
    NamedDecoration{"mdns:dns.idflags", Kind::MdnsIdFlags},
    NamedDecoration{"mdns:dnshdr", Kind::MdnsHeader},
    NamedDecoration{"mdns:gaiopts", Kind::MdnsAddressOptions},
    NamedDecoration{"mdns:nreason", Kind::MdnsNegativeReason},
    NamedDecoration{"mdns:protocol", Kind::MdnsProtocol},
    NamedDecoration{"mdns:rrtype", Kind::MdnsRecordType},
    NamedDecoration{"mdns:yesno", Kind::MdnsYesNo},
    NamedDecoration{"mdnsresponder:domain_name", Kind::MdnsDomainName},
    NamedDecoration{"mdnsresponder:ip_addr", Kind::MdnsIpAddress},
    NamedDecoration{"mdnsresponder:mac_addr", Kind::MdnsMacAddress},
    NamedDecoration{"network:in6_addr", Kind::Ipv6Address},
    NamedDecoration{"network:in_addr", Kind::Ipv4Address},
    NamedDecoration{"network:sockaddr", Kind::SocketAddress},
    NamedDecoration{"odtypes:ODError", Kind::DirectoryError},
    NamedDecoration{"odtypes:mbr_details", Kind::DirectoryMemberDetails},
    NamedDecoration{"odtypes:mbridtype", Kind::DirectoryIdType},
    NamedDecoration{"odtypes:nt_sid_t", Kind::DirectorySid},
    NamedDecoration{"sockaddr", Kind::SocketAddress},
    NamedDecoration{"time_t", Kind::Time},
    NamedDecoration{"timespec", Kind::TimeWithNanoseconds},
    NamedDecoration{"timeval", Kind::TimeWithMicroseconds},
    NamedDecoration{"uuid_t", Kind::Uuid},
};

} // namespace

std::optional<Decoration> decorationNamed(std::string_view name)
{
    constexpr std::string_view builtin = "builtin:";
    if (name.starts_with(builtin))
        name.remove_prefix(builtin.size());
    for (const std::string_view label : {"signpost.description", "signpost.telemetry"})
        if (name.starts_with(label) && name.substr(label.size()).starts_with(':'))
            return Decoration{Kind::Signpost, name.substr(0, label.size()),
                              name.substr(label.size() + 1)};
    const auto* found = std::lower_bound(
        names.begin(), names.end(), name,
        [](const NamedDecoration& entry, std::string_view value) { return entry.name < value; });
    if (found == names.end() || found->name != name)
        return std::nullopt;
    return Decoration{found->kind, {}, {}};
}

} // namespace logstore
