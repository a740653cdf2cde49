// SPDX-License-Identifier: MIT
#include "platform/logstore/message/decorationtable.h"

#include "platform/logstore/message/directorytext.h"
#include "platform/logstore/message/errornames.h"
#include "platform/logstore/message/locationstate.h"
#include "platform/logstore/message/nametables.h"
#include "platform/logstore/message/networktext.h"
#include "platform/logstore/message/numbertext.h"
#include "platform/logstore/message/textoutput.h"
#include "platform/logstore/uuid.h"

#include <algorithm>
#include <array>

namespace logstore {

namespace {

template <bool (*append)(std::string& out, Bytes bytes)>
bool ofBytes(std::string& out, const Argument& argument)
{
    return append(out, argument.bytes());
}

template <const UnitScale& scale>
bool scaled(std::string& out, const Argument& argument)
{
    appendScaled(out, argument.widened(), scale);
    return true;
}

bool appendName(std::string& out, NameTable table, Bytes number, std::string_view quote)
{
    const std::string_view name = tableName(table, unsignedValue(number));
    if (name.empty())
        appendUnknownValue(out, signedValue(number));
    else
        out.append(quote).append(name).append(quote);
    return true;
}

template <NameTable table>
bool named(std::string& out, const Argument& argument)
{
    return appendName(out, table, argument.bytes(), "");
}

template <NameTable table>
bool quoted(std::string& out, const Argument& argument)
{
    return appendName(out, table, argument.bytes(), "\"");
}

bool appendSqliteResult(std::string& out, const Argument& argument)
{
    const Bytes bytes = argument.bytes();
    return (bytes.size() == 4 || bytes.size() == 8)
           && appendName(out, NameTable::SqliteResult, bytes.subspan(0, 4), "\"");
}

bool appendChoice(std::string& out,
                  const Argument& argument,
                  std::string_view no,
                  std::string_view yes)
{
    const Bytes bytes = argument.bytes();
    const bool isSet = std::any_of(bytes.begin(), bytes.end(), [](auto byte) { return byte != 0; });
    out += isSet ? yes : no;
    return true;
}

bool appendErrorNumber(std::string& out, const Argument& argument)
{
    const std::int64_t number = signedValue(argument.bytes());
    out += '[';
    appendDecimal(out, number);
    out += ": ";
    if (number == 0)
        out += "Success";
    else
        appendErrorText(out, number);
    out += ']';
    return true;
}

bool appendMachError(std::string& out, const Argument& argument)
{
    const auto code = loadAt<std::uint32_t>(argument.bytes());
    appendFormatted(out, "[%#x: ", code);
    appendMachErrorText(out, code);
    out += ']';
    return true;
}

bool appendSignal(std::string& out, const Argument& argument)
{
    const std::int64_t number = signedValue(argument.bytes());
    const SignalName* name = signalName(number);
    out += '[';
    if (name) {
        out.append("sig").append(name->name).append(": ").append(name->text);
    } else if (number == 0) {
        out += "sigSignal 0: Signal 0";
    } else {
        appendDecimal(out, number);
        out += ": Unknown signal";
    }
    out += ']';
    return true;
}

bool appendMode(std::string& out, const Argument& argument)
{
    appendFileMode(out, unsignedValue(argument.bytes()));
    return true;
}

bool appendSeconds(std::string& out, const Argument& argument)
{
    appendLocalTime(out, signedValue(argument.bytes()));
    return true;
}

// offset  size  field
//      0     8  seconds since 1970; 4 bytes when the whole has 8
//      8     4  microseconds, or 8 bytes of nanoseconds when the whole has 16; at 4 when it has 8
bool appendTime(std::string& out, Bytes bytes, int fractionDigits)
{
    constexpr int nanosecondDigits = 9;
    const bool isNarrow = bytes.size() == 8;
    if (!isNarrow && bytes.size() != 12 && bytes.size() != 16)
        return false;
    const std::int64_t seconds =
        isNarrow ? loadAt<std::int32_t>(bytes) : loadAt<std::int64_t>(bytes);
    const std::int64_t fraction = bytes.size() == 16 && fractionDigits == nanosecondDigits
                                      ? loadAt<std::int64_t>(bytes, 8)
                                      : loadAt<std::int32_t>(bytes, isNarrow ? 4 : 8);
    if (fraction < 0)
        return false;
    std::string digits;
    appendFormatted(digits, ".%0*lld", fractionDigits, static_cast<long long>(fraction));
    appendLocalTime(out, seconds, digits);
    return true;
}

template <int fractionDigits>
bool appendTimeWith(std::string& out, Bytes bytes)
{
    return appendTime(out, bytes, fractionDigits);
}

bool appendUuid(std::string& out, Bytes bytes)
{
    if (bytes.size() != sizeof(Uuid))
        return false;
    out += loadAt<Uuid>(bytes).text();
    return true;
}

/// Of a number the low four bytes count, the lowest first.
bool appendIpv4Argument(std::string& out, const Argument& argument)
{
    if (!argument.item.isNumber())
        return appendIpv4(out, argument.bytes());
    const std::uint64_t number = argument.widened();
    std::array<std::uint8_t, 4> address{};
    for (std::size_t i = 0; i < address.size(); ++i)
        address[i] = static_cast<std::uint8_t>(number >> (8 * i));
    return appendIpv4(out, address);
}

bool appendEscaped(std::string& out, const Argument& argument)
{
    std::string text;
    appendItemText(text, argument.item);
    out += '"';
    for (const char c : text) {
        if (c == '/')
            out += '\\';
        out += c;
    }
    out += '"';
    return true;
}

bool appendAddressOptions(std::string& out, const Argument& argument)
{
    struct Option
    {
        std::uint64_t bit;
        std::string_view name;
    };
    constexpr std::array<Option, 4> options{{{0x4, "in-app-browser"},
                                             {0x8, "use-failover"},
                                             {0x10, "prohibit-encrypted-dns"},
                                             {0x20, "use-cache-only"}}};
    const std::uint64_t value = unsignedValue(argument.bytes());
    appendFormatted(out, "0x%llX {", static_cast<unsigned long long>(value));
    std::string_view separator;
    for (const Option& option : options) {
        if ((value & option.bit) != 0) {
            out.append(separator).append(option.name);
            separator = ", ";
        }
    }
    out += '}';
    return true;
}

// The decorations that occur in the format strings of macOS. Those without a colon and those of
// "network" are the logging library's own, and what it makes of each kind of argument was seen in
// messages that it composed. The others are those of frameworks, named in front of the colon.
constexpr std::array knownDecorations{
    Decoration{"BOOL", Takes::SystemNumber,
               [](std::string& out, const Argument& argument) {
                   return appendChoice(out, argument, "NO", "YES");
               },
               Decoration::anySize},
    Decoration{"bitrate", Takes::SystemNumber, scaled<bitRateUnits>},
    Decoration{"bool", Takes::SystemNumber,
               [](std::string& out, const Argument& argument) {
                   return appendChoice(out, argument, "false", "true");
               },
               Decoration::anySize},
    Decoration{"bytes", Takes::SystemNumber, scaled<byteUnits>},
    Decoration{"darwin.errno", Takes::SystemNumber, appendErrorNumber, 4},
    Decoration{"darwin.mode", Takes::SystemNumber, appendMode, 4},
    Decoration{"darwin.signal", Takes::SystemNumber, appendSignal, 4},
    Decoration{"errno", Takes::SystemNumber, appendErrorNumber, 4},
    Decoration{"iec-bitrate", Takes::SystemNumber, scaled<binaryBitRateUnits>},
    Decoration{"iec-bytes", Takes::SystemNumber, scaled<binaryByteUnits>},
    Decoration{"in6_addr", Takes::SystemData, ofBytes<appendIpv6>},
    Decoration{"in_addr", Takes::SystemAddress, appendIpv4Argument},
    Decoration{"location:CLClientAuthorizationStatus", Takes::Number,
               quoted<NameTable::LocationAuthorization>},
    Decoration{"location:CLDaemonStatus_Type::Reachability", Takes::Number,
               quoted<NameTable::LocationReachability>},
    Decoration{"location:CLSubHarvesterIdentifier", Takes::Number,
               quoted<NameTable::LocationSubHarvester>},
    Decoration{"location:IOMessage", Takes::Number, quoted<NameTable::IoMessage>},
    Decoration{"location:SqliteResult", Takes::AnyBytes, appendSqliteResult},
    Decoration{"location:_CLClientManagerStateTrackerState", Takes::AnyBytes,
               ofBytes<appendClientManagerState>},
    Decoration{"location:_CLDaemonStatusStateTrackerState", Takes::AnyBytes,
               ofBytes<appendDaemonStatus>},
    Decoration{"location:_CLLocationManagerStateTrackerState", Takes::AnyBytes,
               ofBytes<appendLocationManagerState>},
    Decoration{"location:escape_only", Takes::Text, appendEscaped},
    Decoration{"mach.errno", Takes::SystemNumber, appendMachError, 4},
    Decoration{"mdns:acceptable", Takes::Number,
               [](std::string& out, const Argument& argument) {
                   return appendChoice(out, argument, "unacceptable", "acceptable");
               }},
    Decoration{"mdns:addrmv", Takes::Number,
               [](std::string& out, const Argument& argument) {
                   return appendChoice(out, argument, "rmv", "add");
               }},
    Decoration{"mdns:dns.counts", Takes::AnyBytes, ofBytes<appendDnsCounts>},
    Decoration{"mdns:dns.idflags", Takes::AnyBytes, ofBytes<appendDnsIdFlags>},
    Decoration{"mdns:dnshdr", Takes::AnyBytes, ofBytes<appendDnsHeader>},
    Decoration{"mdns:gaiopts", Takes::Number, appendAddressOptions},
    Decoration{"mdns:nreason", Takes::Number, named<NameTable::DnsNegativeReason>},
    Decoration{"mdns:protocol", Takes::Number, named<NameTable::DnsProtocol>},
    Decoration{"mdns:rrtype", Takes::Number, named<NameTable::DnsRecordType>},
    Decoration{"mdns:yesno", Takes::Number,
               [](std::string& out, const Argument& argument) {
                   return appendChoice(out, argument, "no", "yes");
               }},
    Decoration{"mdnsresponder:domain_name", Takes::AnyBytes, ofBytes<appendDomainName>},
    Decoration{"mdnsresponder:ip_addr", Takes::AnyBytes, ofBytes<appendTaggedAddress>},
    Decoration{"mdnsresponder:mac_addr", Takes::AnyBytes, ofBytes<appendMacAddress>},
    Decoration{"network:in6_addr", Takes::SystemData, ofBytes<appendIpv6>},
    Decoration{"network:in_addr", Takes::SystemAddress, appendIpv4Argument},
    Decoration{"network:sockaddr", Takes::SystemData, ofBytes<appendSocketAddress>},
    Decoration{"odtypes:ODError", Takes::Number, named<NameTable::DirectoryError>},
    Decoration{"odtypes:mbr_details", Takes::AnyBytes, ofBytes<appendMemberDetails>},
    Decoration{"odtypes:mbridtype", Takes::Number, named<NameTable::DirectoryIdType>},
    Decoration{"odtypes:nt_sid_t", Takes::AnyBytes, ofBytes<appendSid>},
    Decoration{"sockaddr", Takes::SystemData, ofBytes<appendSocketAddress>},
    Decoration{"time_t", Takes::SystemNumber, appendSeconds, 4 + 8},
    Decoration{"timespec", Takes::SystemData, ofBytes<appendTimeWith<9>>},
    Decoration{"timeval", Takes::SystemData, ofBytes<appendTimeWith<6>>},
    Decoration{"uuid", Takes::SystemData, ofBytes<appendUuid>},
    Decoration{"uuid_t", Takes::SystemData, ofBytes<appendUuid>},
};

constexpr bool isBefore(const Decoration& one, const Decoration& other)
{
    return one.name < other.name;
}

static_assert(std::is_sorted(knownDecorations.begin(), knownDecorations.end(), isBefore));

} // namespace

const Decoration* decorationNamed(std::string_view name)
{
    const auto* found = std::lower_bound(
        knownDecorations.begin(), knownDecorations.end(), name,
        [](const Decoration& entry, std::string_view value) { return entry.name < value; });
    return found != knownDecorations.end() && found->name == name ? found : nullptr;
}

} // namespace logstore
