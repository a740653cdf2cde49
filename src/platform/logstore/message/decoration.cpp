// SPDX-License-Identifier: MIT
#include "platform/logstore/message/decoration.h"

#include "platform/logstore/bytes/utf8.h"
#include "platform/logstore/message/directorytext.h"
#include "platform/logstore/message/formatprogram.h"
#include "platform/logstore/message/locationstate.h"
#include "platform/logstore/message/nametables.h"
#include "platform/logstore/message/networktext.h"
#include "platform/logstore/message/numbertext.h"
#include "platform/logstore/message/renderer.h"
#include "platform/logstore/message/textoutput.h"
#include "platform/logstore/uuid.h"

#include <array>

namespace logstore {

namespace {

bool isNumber(const Item& item)
{
    return item.kind() == ItemKind::Number || item.kind() == ItemKind::ErrorNumber;
}

void appendName(std::string& out, NameTable table, const Item& item, std::string_view quote)
{
    const std::string_view name = tableName(table, unsignedValue(item.bytes));
    if (name.empty())
        appendUnknownValue(out, signedValue(item.bytes));
    else
        out.append(quote).append(name).append(quote);
}

void appendChoice(std::string& out, const Item& item, std::string_view no, std::string_view yes)
{
    out += unsignedValue(item.bytes) != 0 ? yes : no;
}

void appendErrorNumber(std::string& out, const Item& item)
{
    const std::int64_t number = signedValue(item.bytes);
    out += '[';
    appendDecimal(out, number);
    out += ": ";
    appendErrorText(out, number);
    out += ']';
}

void appendSignal(std::string& out, const Item& item)
{
    const std::uint64_t number = unsignedValue(item.bytes);
    const std::string_view name = signalName(number);
    out += '[';
    if (name.empty()) {
        appendDecimal(out, signedValue(item.bytes));
        out += ": Unknown signal: ";
        appendDecimal(out, signedValue(item.bytes));
    } else {
        out.append("sig").append(name).append(": ").append(signalText(number));
    }
    out += ']';
}

bool appendTime(std::string& out, Bytes bytes, int fractionDigits)
{
    std::int64_t seconds = 0;
    std::int64_t fraction = 0;
    if (bytes.size() == 16 || bytes.size() == 12) {
        seconds = loadAt<std::int64_t>(bytes);
        fraction =
            bytes.size() == 16 ? loadAt<std::int64_t>(bytes, 8) : loadAt<std::int32_t>(bytes, 8);
    } else if (bytes.size() == 8) {
        seconds = loadAt<std::int32_t>(bytes);
        fraction = loadAt<std::int32_t>(bytes, 4);
    } else {
        return false;
    }
    if (fraction < 0 || !appendLocalTime(out, seconds))
        return false;
    appendFormatted(out, ".%0*lld", fractionDigits, static_cast<long long>(fraction));
    return true;
}

void appendEscaped(std::string& out, Bytes bytes)
{
    std::string text;
    appendUtf8(text, cString(bytes));
    out += '"';
    for (const char c : text) {
        if (c == '/')
            out += '\\';
        out += c;
    }
    out += '"';
}

void appendAddressOptions(std::string& out, const Item& item)
{
    struct Option
    {
        std::uint64_t bit;
        std::string_view name;
    };
    constexpr std::array<Option, 3> options{
        {{4, "in-app-browser"}, {8, "use-failover"}, {0x10, "prohibit-encrypted-dns"}}};
    const std::uint64_t value = unsignedValue(item.bytes);
    appendFormatted(out, "0x%llX {", static_cast<unsigned long long>(value));
    std::string_view separator;
    for (const Option& option : options) {
        if ((value & option.bit) != 0) {
            out.append(separator).append(option.name);
            separator = ", ";
        }
    }
    out += '}';
}

bool appendUuid(std::string& out, Bytes bytes)
{
    if (bytes.size() != sizeof(Uuid))
        return false;
    out += loadAt<Uuid>(bytes).text();
    return true;
}

void appendSignpostValue(std::string& out,
                         const Decoration& decoration,
                         const Conversion& conversion,
                         const Item& item,
                         std::int32_t precision)
{
    constexpr std::string_view floatLetters = "aAeEfFgG";
    out.append("__##__")
        .append(decoration.label)
        .append("#____#")
        .append(decoration.key)
        .append("#_##_#");
    const bool isTime = decoration.key == "begin_time" || decoration.key == "end_time";
    if (isTime && isNumber(item))
        appendDecimal(out, unsignedValue(item.bytes));
    else if (isNumber(item) && floatLetters.find(conversion.letter) != std::string_view::npos
             && item.bytes.size() == 8)
        appendFormatted(out, "%.16g", loadAt<double>(item.bytes));
    else if (isNumber(item) && floatLetters.find(conversion.letter) != std::string_view::npos
             && item.bytes.size() == 4)
        appendFormatted(out, "%.16g", static_cast<double>(loadAt<float>(item.bytes)));
    else
        appendByLetter(out, conversion, item, Conversion::none, false, precision);
    out += "##__##";
}

/// Decorations for numbers. False when the kind is none of them.
bool appendDecoratedNumber(std::string& out, DecorationKind kind, const Item& item)
{
    using Kind = DecorationKind;
    switch (kind) {
    case Kind::LowerCaseBool: appendChoice(out, item, "false", "true"); return true;
    case Kind::UpperCaseBool: appendChoice(out, item, "NO", "YES"); return true;
    case Kind::ErrorNumber: appendErrorNumber(out, item); return true;
    case Kind::FileMode: appendFileMode(out, unsignedValue(item.bytes)); return true;
    case Kind::Signal: appendSignal(out, item); return true;
    case Kind::Time:
        if (!appendLocalTime(out, signedValue(item.bytes)))
            out += unsupportedValue;
        return true;
    case Kind::ByteCount: appendScaled(out, unsignedValue(item.bytes), byteUnits); return true;
    case Kind::BinaryByteCount:
        appendScaled(out, unsignedValue(item.bytes), binaryByteUnits);
        return true;
    case Kind::BitRate: appendScaled(out, unsignedValue(item.bytes), bitRateUnits); return true;
    case Kind::BinaryBitRate:
        appendScaled(out, unsignedValue(item.bytes), binaryBitRateUnits);
        return true;
    case Kind::LocationAuthorization:
        appendName(out, NameTable::LocationAuthorization, item, "\"");
        return true;
    case Kind::LocationReachability:
        appendName(out, NameTable::LocationReachability, item, "\"");
        return true;
    case Kind::LocationSubHarvester:
        appendName(out, NameTable::LocationSubHarvester, item, "\"");
        return true;
    case Kind::LocationIoMessage: appendName(out, NameTable::IoMessage, item, "\""); return true;
    case Kind::MdnsYesNo: appendChoice(out, item, "no", "yes"); return true;
    case Kind::MdnsAcceptable: appendChoice(out, item, "unacceptable", "acceptable"); return true;
    case Kind::MdnsAddRemove: appendChoice(out, item, "rmv", "add"); return true;
    case Kind::MdnsRecordType: appendName(out, NameTable::DnsRecordType, item, ""); return true;
    case Kind::MdnsNegativeReason:
        appendName(out, NameTable::DnsNegativeReason, item, "");
        return true;
    case Kind::MdnsProtocol: appendName(out, NameTable::DnsProtocol, item, ""); return true;
    case Kind::MdnsAddressOptions: appendAddressOptions(out, item); return true;
    case Kind::DirectoryIdType: appendName(out, NameTable::DirectoryIdType, item, ""); return true;
    case Kind::DirectoryError: appendName(out, NameTable::DirectoryError, item, ""); return true;
    default: return false;
    }
}

enum class Outcome { Written, WrongSize, NotOfBytes };

Outcome written(bool fits)
{
    return fits ? Outcome::Written : Outcome::WrongSize;
}

/// Decorations for bytes, those of a number of the right size included.
Outcome appendDecoratedBytes(std::string& out, DecorationKind kind, const Item& item)
{
    using Kind = DecorationKind;
    switch (kind) {
    case Kind::TimeWithMicroseconds: return written(appendTime(out, item.bytes, 6));
    case Kind::TimeWithNanoseconds: return written(appendTime(out, item.bytes, 9));
    case Kind::Uuid: return written(appendUuid(out, item.bytes));
    case Kind::Ipv4Address: return written(appendIpv4(out, item.bytes));
    case Kind::Ipv6Address: return written(appendIpv6(out, item.bytes));
    case Kind::SocketAddress: return written(appendSocketAddress(out, item.bytes));
    case Kind::MdnsIpAddress: return written(appendTaggedAddress(out, item.bytes));
    case Kind::MdnsMacAddress: return written(appendMacAddress(out, item.bytes));
    case Kind::MdnsDomainName: return written(appendDomainName(out, item.bytes));
    case Kind::MdnsCounts: return written(appendDnsCounts(out, item.bytes));
    case Kind::MdnsIdFlags: return written(appendDnsIdFlags(out, item.bytes));
    case Kind::MdnsHeader: return written(appendDnsHeader(out, item.bytes));
    case Kind::DirectoryMemberDetails: return written(appendMemberDetails(out, item.bytes));
    case Kind::DirectorySid: return written(appendSid(out, item.bytes));
    case Kind::LocationClientManagerState:
        return written(appendClientManagerState(out, item.bytes));
    case Kind::LocationManagerState: return written(appendLocationManagerState(out, item.bytes));
    case Kind::LocationDaemonStatus: return written(appendDaemonStatus(out, item.bytes));
    default: return Outcome::NotOfBytes;
    }
}

bool isTextual(const Item& item)
{
    return item.kind() == ItemKind::Text || item.kind() == ItemKind::TextToo
           || item.kind() == ItemKind::Object;
}

} // namespace

bool appendDecorated(std::string& out,
                     const Decoration& decoration,
                     const Conversion& conversion,
                     const Item& item,
                     std::int32_t precision)
{
    if (decoration.kind == DecorationKind::Signpost) {
        appendSignpostValue(out, decoration, conversion, item, precision);
        return true;
    }
    if (decoration.kind == DecorationKind::LocationEscape) {
        if (isTextual(item))
            appendEscaped(out, item.bytes);
        return isTextual(item);
    }
    if (decoration.kind == DecorationKind::LocationSqliteResult) {
        if (item.bytes.size() != 4 && item.bytes.size() != 8)
            out += unsupportedValue;
        else
            appendName(out, NameTable::SqliteResult,
                       Item{item.type, false, item.bytes.subspan(0, 4)}, "\"");
        return true;
    }
    std::string number;
    if (isNumber(item) && appendDecoratedNumber(number, decoration.kind, item)) {
        out += isNumberSize(item.bytes.size()) ? number : unsupportedValue;
        return true;
    }
    switch (appendDecoratedBytes(out, decoration.kind, item)) {
    case Outcome::Written: return true;
    case Outcome::WrongSize: out += unsupportedValue; return true;
    case Outcome::NotOfBytes: break;
    }
    return false;
}

} // namespace logstore
