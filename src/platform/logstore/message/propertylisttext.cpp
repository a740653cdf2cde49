// SPDX-License-Identifier: MIT
#include "platform/logstore/message/propertylisttext.h"

#include "platform/base/utf8.h"
#include "platform/logstore/message/textoutput.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <numeric>

namespace logstore {

namespace {

using Kind = PropertyList::Kind;

enum CharacterClass : std::uint8_t { Bare, Plain, Escaped };

/// Letters and digits stand bare; other ASCII needs quotes, and some of it an escape.
constexpr std::array<CharacterClass, 256> characterClasses = [] {
    std::array<CharacterClass, 256> classes{};
    for (std::size_t c = 0; c < classes.size(); ++c) {
        const bool alphanumeric =
            (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool escaped =
            c >= 0x80 || c == '"' || c == '\\' || c == '\n' || c == '\t' || c == '\r';
        classes[c] = alphanumeric ? Bare : escaped ? Escaped : Plain;
    }
    return classes;
}();

/// How many characters at the front of `text` are of at most this class.
std::size_t prefixLength(std::string_view text, CharacterClass highest)
{
    std::size_t length = 0;
    while (length < text.size()
           && characterClasses[static_cast<std::uint8_t>(text[length])] <= highest)
        ++length;
    return length;
}

void appendUtf16Escape(std::string& out, std::uint32_t codePoint)
{
    if (codePoint < 0x10000) {
        appendFormatted(out, "\\U%04x", codePoint);
        return;
    }
    const std::uint32_t offset = codePoint - 0x10000;
    appendFormatted(out, "\\U%04x\\U%04x", 0xd800 + (offset >> 10), 0xdc00 + (offset & 0x3ff));
}

void appendEscape(std::string& out, std::uint32_t codePoint)
{
    switch (codePoint) {
    case '\n': out += "\\n"; break;
    case '\t': out += "\\t"; break;
    case '\r': out += "\\r"; break;
    case '"':
    case '\\':
        out += '\\';
        out += static_cast<char>(codePoint);
        break;
    default: appendUtf16Escape(out, codePoint);
    }
}

/// Bare when it is letters and digits only, else in quotes with escapes.
void appendQuoted(std::string& out, std::string_view text)
{
    if (!text.empty() && prefixLength(text, Bare) == text.size()) {
        out += text;
        return;
    }
    out += '"';
    for (;;) {
        const std::size_t plain = prefixLength(text, Plain);
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        std::size_t length = 0;
        appendEscape(out, nextCharacter(text, length));
        text.remove_prefix(length);
    }
    out += '"';
}

void appendReal(std::string& out, double value)
{
    if (std::isfinite(value))
        appendShortest(out, value);
    else
        out += "null";
}

/// `seconds` since 2001-01-01 UTC, as yyyy-MM-dd HH:mm:ss +0000.
void appendDate(std::string& out, double seconds)
{
    using namespace std::chrono;
    constexpr double farthest = 1e11; // some three thousand years: beyond it the calendar overflows
    if (!(std::fabs(seconds) < farthest)) {
        out += unsupportedValue;
        return;
    }
    constexpr sys_days epoch = year(2001) / January / 1;
    const auto moment =
        epoch + std::chrono::seconds(static_cast<std::int64_t>(std::floor(seconds)));
    const auto midnight = floor<days>(moment);
    const year_month_day day(midnight);
    const hh_mm_ss clock(moment - midnight);
    appendFormatted(out, "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(day.year()),
                    static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                    static_cast<int>(clock.hours().count()),
                    static_cast<int>(clock.minutes().count()),
                    static_cast<int>(clock.seconds().count()));
}

void appendData(std::string& out, std::string_view data)
{
    constexpr std::size_t longestWhole = 24;
    constexpr std::size_t shownFront = 16;
    constexpr std::size_t shownBack = 8;
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
    out += "{length = ";
    appendDecimal(out, bytes.size());
    out += ", bytes = 0x";
    if (bytes.size() <= longestWhole) {
        appendHex(out, bytes, false);
        out += '}';
        return;
    }
    const auto groups = [&out](Bytes part) {
        for (std::size_t at = 0; at < part.size(); at += 4) {
            appendHex(out, part.subspan(at, 4), false);
            out += ' ';
        }
    };
    groups(bytes.first(shownFront));
    out += "... ";
    groups(bytes.last(shownBack));
    out += '}';
}

void appendScalar(std::string& out, const PropertyList& value)
{
    switch (value.kind) {
    case Kind::Boolean:
    case Kind::Uid:
    case Kind::Unsigned: appendDecimal(out, value.integer); break;
    case Kind::Integer: appendDecimal(out, static_cast<std::int64_t>(value.integer)); break;
    case Kind::Real: appendReal(out, value.real); break;
    case Kind::Date: appendDate(out, value.real); break;
    case Kind::Data: appendData(out, value.text); break;
    case Kind::String: out += value.text; break;
    default: out += "null"; break;
    }
}

bool isCollection(const PropertyList& value)
{
    return value.kind == Kind::Array || value.kind == Kind::Dictionary;
}

void appendInside(std::string& out, const PropertyList& value)
{
    std::string text;
    switch (value.kind) {
    case Kind::String: appendQuoted(out, value.text); return;
    case Kind::Integer:
    case Kind::Real:
    case Kind::Date:
        appendScalar(text, value);
        appendQuoted(out, text);
        return;
    default: appendScalar(out, value);
    }
}

std::vector<std::size_t> sortedByKey(const PropertyList& dictionary)
{
    std::vector<std::size_t> order(dictionary.keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&dictionary](std::size_t a, std::size_t b) {
        return dictionary.keys[a] < dictionary.keys[b];
    });
    return order;
}

void appendCollection(std::string& out, const PropertyList& collection, std::size_t level)
{
    constexpr std::size_t step = 4;
    const auto indent = [&out](std::size_t levels) { out.append(step * levels, ' '); };
    const auto value = [&out, level](const PropertyList& element) {
        if (isCollection(element))
            appendCollection(out, element, level + 1);
        else
            appendInside(out, element);
    };
    indent(level);
    if (collection.kind == Kind::Dictionary) {
        out += "{\n";
        for (const std::size_t i : sortedByKey(collection)) {
            indent(level + 1);
            appendQuoted(out, collection.keys[i]);
            out += " = ";
            value(collection.elements[i]);
            out += ";\n";
        }
        indent(level);
        out += '}';
        return;
    }
    out += "(\n";
    for (std::size_t i = 0; i < collection.elements.size(); ++i) {
        indent(level + 1);
        value(collection.elements[i]);
        out += i + 1 < collection.elements.size() ? ",\n" : "\n";
    }
    indent(level);
    out += ')';
}

} // namespace

void appendDescription(std::string& out, const PropertyList& list)
{
    if (isCollection(list))
        appendCollection(out, list, 0);
    else
        appendScalar(out, list);
}

} // namespace logstore
