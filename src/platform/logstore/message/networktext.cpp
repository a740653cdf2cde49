// SPDX-License-Identifier: MIT
#include "platform/logstore/message/networktext.h"

#include "platform/logstore/bytes/utf8.h"
#include "platform/logstore/message/textoutput.h"

#include <array>

namespace logstore {

namespace {

// Values of the platform the log comes from, not of this one.
constexpr std::uint8_t familyIpv4 = 2;
constexpr std::uint8_t familyIpv6 = 30;

std::uint16_t bigEndianAt(Bytes bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

constexpr std::size_t groupCount = 8; ///< of a long address

struct ZeroRun
{
    std::size_t begin = groupCount;
    std::size_t end = groupCount;
};

/// The first of the longest runs of two and more groups of zero.
ZeroRun longestZeroRun(Bytes address)
{
    ZeroRun longest;
    std::size_t longestSize = 1;
    for (std::size_t begin = 0; begin < groupCount; ++begin) {
        std::size_t end = begin;
        while (end < groupCount && bigEndianAt(address, end * 2) == 0)
            ++end;
        if (end - begin > longestSize) {
            longest = {begin, end};
            longestSize = end - begin;
        }
    }
    return longest;
}

void appendFlags(std::string& out, std::uint16_t id, std::uint16_t flags)
{
    constexpr std::array operations{"Query",  "IQuery", "Status", "Unassigned",
                                    "Notify", "Update", "DSO"};
    constexpr std::array responses{"NoError", "FormErr", "ServFail", "NXDomain",
                                   "NotImp",  "Refused", "YXDomain", "YXRRSet",
                                   "NXRRSet", "NotAuth", "NotZone",  "DSOTypeNI"};
    struct FlagName
    {
        std::uint16_t bit;
        const char* name;
    };
    constexpr std::array<FlagName, 6> names{
        {{0x400, "AA"}, {0x200, "TC"}, {0x100, "RD"}, {0x80, "RA"}, {0x20, "AD"}, {0x10, "CD"}}};

    const std::size_t operation = flags >> 11 & 15;
    const std::size_t response = flags & 15;
    appendFormatted(out, "id: 0x%04X (%u), flags: 0x%04X (", id, id, flags);
    out += (flags & 0x8000) != 0 ? "R/" : "Q/";
    out += operation < operations.size() ? operations[operation] : "?";
    for (const FlagName& flag : names)
        if ((flags & flag.bit) != 0)
            out.append(", ").append(flag.name);
    out += ", ";
    out += response < responses.size() ? responses[response] : "?";
    out += ')';
}

} // namespace

bool appendIpv4(std::string& out, Bytes address)
{
    if (address.size() != 4)
        return false;
    appendFormatted(out, "%u.%u.%u.%u", address[0], address[1], address[2], address[3]);
    return true;
}

bool appendIpv6(std::string& out, Bytes address)
{
    if (address.size() != 16)
        return false;
    const ZeroRun zeros = longestZeroRun(address);
    constexpr std::size_t mappedStart = 10;
    if (zeros.begin == 0 && zeros.end * 2 == mappedStart
        && bigEndianAt(address, mappedStart) == 0xffff) {
        out += "::ffff:";
        return appendIpv4(out, address.subspan(12));
    }
    for (std::size_t group = 0; group < groupCount; ++group) {
        if (group == zeros.begin && zeros.end > zeros.begin) {
            out += "::";
            group = zeros.end - 1;
            continue;
        }
        if (group > 0 && group != zeros.end)
            out += ':';
        appendFormatted(out, "%x", bigEndianAt(address, group * 2));
    }
    return true;
}

bool appendSocketAddress(std::string& out, Bytes address)
{
    if (address.empty()) {
        out += "<NULL>";
        return true;
    }
    const std::uint8_t family = address.size() < 2 ? 0 : address[1];
    if (family == familyIpv4)
        return appendIpv4(out, clipped(address, 4, 4));
    return family == familyIpv6 && appendIpv6(out, clipped(address, 8, 16));
}

bool appendTaggedAddress(std::string& out, Bytes address)
{
    const auto version = loadAt<std::uint32_t>(address);
    if (version == 4)
        return appendIpv4(out, clipped(address, 4, 4));
    return version == 6 && appendIpv6(out, clipped(address, 4, 16));
}

bool appendMacAddress(std::string& out, Bytes address)
{
    if (address.empty())
        return false;
    for (std::size_t i = 0; i < address.size(); ++i) {
        if (i > 0)
            out += ':';
        appendHex(out, address.subspan(i, 1), true);
    }
    return true;
}

bool appendDomainName(std::string& out, Bytes labels)
{
    std::string name;
    ByteReader in(labels);
    for (;;) {
        const auto length = in.read<std::uint8_t>();
        const Bytes label = in.take(length);
        if (!in.ok())
            return false;
        if (length == 0)
            break;
        appendUtf8(name, {reinterpret_cast<const char*>(label.data()), label.size()});
        name += '.';
    }
    out += name.empty() ? "." : name;
    return true;
}

bool appendDnsCounts(std::string& out, Bytes counts)
{
    if (counts.size() != 8)
        return false;
    appendFormatted(out, "%u/%u/%u/%u", loadAt<std::uint16_t>(counts, 6),
                    loadAt<std::uint16_t>(counts, 4), loadAt<std::uint16_t>(counts, 2),
                    loadAt<std::uint16_t>(counts, 0));
    return true;
}

bool appendDnsIdFlags(std::string& out, Bytes value)
{
    if (value.size() != 4 && value.size() != 8)
        return false;
    appendFlags(out, loadAt<std::uint16_t>(value, 2), loadAt<std::uint16_t>(value, 0));
    return true;
}

bool appendDnsHeader(std::string& out, Bytes header)
{
    if (header.size() != 12)
        return false;
    appendFlags(out, bigEndianAt(header, 0), bigEndianAt(header, 2));
    appendFormatted(out, ", counts: %u/%u/%u/%u", bigEndianAt(header, 4), bigEndianAt(header, 6),
                    bigEndianAt(header, 8), bigEndianAt(header, 10));
    return true;
}

} // namespace logstore
