// SPDX-License-Identifier: MIT
#include "platform/logstore/message/networktext.h"

#include "platform/base/utf8.h"
#include "platform/logstore/message/textoutput.h"

#include <array>

namespace logstore {

namespace {

// Address families of macOS, AF_… of its sys/socket.h; other systems number them otherwise.
enum Family : std::uint8_t { LocalFamily = 1, Ipv4Family = 2, LinkFamily = 18, Ipv6Family = 30 };

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

std::string utf8Text(Bytes bytes)
{
    std::string text;
    appendUtf8(text, cString(bytes));
    return text;
}

// offset  size  field
//      2        path, ended by a zero byte or by the end
bool appendLocalSocket(std::string& out, Bytes address)
{
    out.append("AF_UNIX:\"").append(utf8Text(clipped(address, 2))).append("\"");
    return true;
}

// offset  size  field
//      2     2  port, big-endian
//      4     4  address
bool appendIpv4Socket(std::string& out, Bytes address)
{
    constexpr std::size_t size = 16;
    if (address.size() < size)
        return false;
    appendIpv4(out, address.subspan(4, 4));
    if (const std::uint16_t port = bigEndianAt(address, 2); port != 0)
        appendFormatted(out, ":%u", port);
    return true;
}

// offset  size  field
//      2     2  port, big-endian
//      8    16  address
//     24     4  zone: the number of an interface
bool appendIpv6Socket(std::string& out, Bytes address)
{
    constexpr std::size_t size = 28;
    constexpr std::uint32_t loopback = 1;
    if (address.size() < size)
        return false;
    appendIpv6(out, address.subspan(8, 16));
    // The names of the other interfaces are known to the machine that wrote the log only.
    const auto zone = loadAt<std::uint32_t>(address, 24);
    if (zone == loopback)
        out += "%lo0";
    else if (zone != 0)
        appendFormatted(out, "%%%u", zone);
    if (const std::uint16_t port = bigEndianAt(address, 2); port != 0)
        appendFormatted(out, ".%u", port);
    return true;
}

// offset  size  field
//      2     2  number of the interface
//      5     1  size of its name
//      6     1  size of its address
//      8        name, then address
bool appendLinkSocket(std::string& out, Bytes address)
{
    constexpr std::size_t headSize = 8;
    if (address.size() < headSize)
        return false;
    const std::size_t nameSize = address[5];
    const std::size_t linkSize = address[6];
    if (nameSize + linkSize == 0 || nameSize + linkSize > address.size() - headSize)
        return false;
    const std::string name = utf8Text(address.subspan(headSize, nameSize));
    const Bytes link = address.subspan(headSize + nameSize, linkSize);
    if (link.empty()) {
        out += name;
        return true;
    }
    for (std::size_t i = 0; i < link.size(); ++i)
        appendFormatted(out, i == 0 ? "%x" : ":%x", link[i]);
    out += '%';
    if (nameSize > 0)
        out += name;
    else
        appendDecimal(out, loadAt<std::uint16_t>(address, 2));
    return true;
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
    const std::size_t length = address[0];
    if (length < 2 || length > address.size())
        return false;
    const Bytes socket = address.subspan(0, length);
    switch (socket[1]) {
    case LocalFamily: return appendLocalSocket(out, socket);
    case Ipv4Family: return appendIpv4Socket(out, socket);
    case LinkFamily: return appendLinkSocket(out, socket);
    case Ipv6Family: return appendIpv6Socket(out, socket);
    default: return false;
    }
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
