// SPDX-License-Identifier: MIT
#include "platform/logstore/bytes/utf8.h"
#include "platform/logstore/message/nametables.h"
#include "platform/logstore/message/renderer.h"
#include "platform/logstore/message/textoutput.h"

#include <algorithm>

namespace logstore {

namespace {

/// Width, precision and justification as they are in force for one argument.
struct Field
{
    const Conversion& conversion;
    std::int32_t width;
    bool leftJustified;
    std::int32_t precision;
};

std::size_t codePointCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

/// Pads what was written from `start` on to the field's width.
void pad(std::string& out, std::size_t start, const Field& field)
{
    if (field.width <= 0)
        return;
    const std::size_t length = codePointCount(std::string_view(out).substr(start));
    const auto width = static_cast<std::size_t>(field.width);
    if (length >= width)
        return;
    if (field.leftJustified)
        out.append(width - length, ' ');
    else
        out.insert(start, width - length, ' ');
}

void appendMismatch(std::string& out, const Conversion& conversion, const Item& item)
{
    const char* kind = "UNKNOWN";
    switch (item.kind()) {
    case ItemKind::Number:
    case ItemKind::Count: kind = "SCALAR"; break;
    case ItemKind::Text:
    case ItemKind::TextToo: kind = "STRING"; break;
    case ItemKind::Data: kind = "DATA"; break;
    case ItemKind::Object: kind = "OBJECT"; break;
    case ItemKind::WideText: kind = "WIDESTRING"; break;
    case ItemKind::ErrorNumber: kind = "ERRNO"; break;
    default: break;
    }
    out += "<decode: mismatch for [";
    out += conversion.text;
    out += "] got [";
    out += kind;
    out += " sz:";
    appendDecimal(out, item.bytes.size());
    out += "]>";
}

struct Integer
{
    std::uint64_t bits; ///< sign-extended for signed conversions
    bool negative;
};

/// The item's value in its own size, cut to fewer bytes by hh and h.
Integer integerOf(const Conversion& conversion, Bytes bytes, bool isSigned)
{
    std::size_t size = bytes.size();
    if (conversion.length == Conversion::Length::Char)
        size = 1;
    else if (conversion.length == Conversion::Length::Short)
        size = std::min<std::size_t>(size, 2);
    std::uint64_t bits = 0;
    std::memcpy(&bits, bytes.data(), size);
    if (isSigned && size < 8 && (bits >> (size * 8 - 1) & 1) != 0)
        bits |= ~std::uint64_t{0} << (size * 8);
    return {bits, isSigned && (bits >> 63) != 0};
}

/// `sign` and `prefix` stand in front of zeros that a precision or the 0 flag puts in.
void appendDigits(std::string& out,
                  const Field& field,
                  std::string_view prefix,
                  std::string_view digits)
{
    const auto asSize = [](std::int32_t value) {
        return static_cast<std::size_t>(std::max(value, 0));
    };
    std::size_t zeros =
        asSize(field.precision) > digits.size() ? asSize(field.precision) - digits.size() : 0;
    const std::size_t length = prefix.size() + zeros + digits.size();
    std::size_t blanks = asSize(field.width) > length ? asSize(field.width) - length : 0;
    if (field.conversion.zeroPadded && !field.leftJustified
        && field.precision == Conversion::none) {
        zeros += blanks;
        blanks = 0;
    }
    if (!field.leftJustified)
        out.append(blanks, ' ');
    out += prefix;
    out.append(zeros, '0');
    out += digits;
    if (field.leftJustified)
        out.append(blanks, ' ');
}

void appendSigned(std::string& out, const Field& field, Bytes bytes)
{
    const Integer value = integerOf(field.conversion, bytes, true);
    char digits[24];
    const std::uint64_t magnitude = value.negative ? 0 - value.bits : value.bits;
    const char* end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
    const std::string_view sign = value.negative               ? "-"
                                  : field.conversion.plusSign  ? "+"
                                  : field.conversion.spaceSign ? " "
                                                               : "";
    appendDigits(out, field, sign, {digits, end});
}

void appendUnsigned(std::string& out, const Field& field, Bytes bytes, int base)
{
    const Integer value = integerOf(field.conversion, bytes, false);
    char digits[24];
    char* end = std::to_chars(digits, digits + sizeof digits, value.bits, base).ptr;
    const bool upperCase = field.conversion.letter == 'X';
    if (upperCase)
        std::transform(digits, end, digits,
                       [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    std::string_view prefix;
    if (field.conversion.alternate && value.bits != 0)
        prefix = base == 16 ? (upperCase ? "0X" : "0x") : base == 8 ? "0" : "";
    appendDigits(out, field, prefix, {digits, end});
}

void appendPointer(std::string& out, const Field& field, Bytes bytes)
{
    char digits[24];
    const Integer value = integerOf(Conversion{}, bytes, false);
    const char* end = std::to_chars(digits, digits + sizeof digits, value.bits, 16).ptr;
    appendDigits(out, field, "0x", {digits, end});
}

void appendCharacter(std::string& out, const Field& field, Bytes bytes)
{
    const std::size_t start = out.size();
    const std::uint64_t value = integerOf(Conversion{}, bytes, false).bits;
    const bool wide =
        field.conversion.length == Conversion::Length::Long || field.conversion.letter == 'C';
    const std::uint64_t codePoint = wide ? value : value & 0xff;
    if (codePoint != 0)
        appendCodePoint(out, codePoint > 0x10ffff ? 0xfffd : static_cast<std::uint32_t>(codePoint));
    pad(out, start, field);
}

void appendFloat(std::string& out, const Field& field, const Item& item)
{
    double value = 0;
    if (item.bytes.size() == 8)
        value = loadAt<double>(item.bytes);
    else if (item.bytes.size() == 4)
        value = static_cast<double>(loadAt<float>(item.bytes));
    else {
        out += unsupportedValue;
        return;
    }
    const Conversion& conversion = field.conversion;
    std::string format = "%";
    if (field.leftJustified)
        format += '-';
    if (conversion.plusSign)
        format += '+';
    if (conversion.spaceSign)
        format += ' ';
    if (conversion.alternate)
        format += '#';
    if (conversion.zeroPadded)
        format += '0';
    if (field.width > 0)
        appendDecimal(format, field.width);
    if (field.precision != Conversion::none) {
        format += '.';
        appendDecimal(format, field.precision);
    }
    format += conversion.letter;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    appendFormatted(out, format.c_str(), value);
#pragma GCC diagnostic pop
}

void appendError(std::string& out, const Field& field, Bytes bytes)
{
    const std::size_t start = out.size();
    appendErrorText(out, signedValue(bytes));
    pad(out, start, field);
}

void appendText(std::string& out, const Field& field, const Item& item)
{
    const std::size_t start = out.size();
    if (item.bytes.empty())
        out += "(null)";
    else if (item.kind() == ItemKind::WideText)
        appendUtf32(out, item.bytes);
    else {
        std::string_view text = cString(item.bytes);
        const bool cuts = field.conversion.letter != '@' && field.precision > 0;
        if (cuts)
            text = text.substr(0, static_cast<std::size_t>(field.precision));
        appendUtf8(out, text);
    }
    pad(out, start, field);
}

void appendBytes(std::string& out, const Field& field, Bytes bytes)
{
    const std::size_t start = out.size();
    appendHex(out, bytes, true);
    pad(out, start, field);
}

void appendNumber(std::string& out, const Field& field, const Item& item)
{
    if (!isNumberSize(item.bytes.size())) {
        out += unsupportedValue;
        return;
    }
    switch (field.conversion.letter) {
    case 'd':
    case 'D':
    case 'i': appendSigned(out, field, item.bytes); break;
    case 'u':
    case 'U': appendUnsigned(out, field, item.bytes, 10); break;
    case 'x':
    case 'X': appendUnsigned(out, field, item.bytes, 16); break;
    case 'o':
    case 'O': appendUnsigned(out, field, item.bytes, 8); break;
    case 'p': appendPointer(out, field, item.bytes); break;
    case 'c':
    case 'C': appendCharacter(out, field, item.bytes); break;
    case 'm': appendError(out, field, item.bytes); break;
    case 'n': break;
    default: appendFloat(out, field, item); break;
    }
}

} // namespace

void appendByLetter(std::string& out,
                    const Conversion& conversion,
                    const Item& item,
                    std::int32_t width,
                    bool leftJustified,
                    std::int32_t precision)
{
    const Field field{conversion, width, leftJustified, precision};
    const ItemKind kind = item.kind();
    const bool isText = kind == ItemKind::Text || kind == ItemKind::TextToo
                        || kind == ItemKind::Object || kind == ItemKind::Data;
    bool fits = false;
    switch (conversion.letter) {
    case 's':
    case 'S':
    case '@':
        fits = isText || kind == ItemKind::WideText;
        if (fits)
            appendText(out, field, item);
        break;
    case 'P':
        fits = isText;
        if (fits)
            appendBytes(out, field, item.bytes);
        break;
    case 'm':
        fits = kind == ItemKind::Number || kind == ItemKind::ErrorNumber;
        if (fits)
            appendNumber(out, field, item);
        break;
    default:
        fits = kind == ItemKind::Number;
        if (fits)
            appendNumber(out, field, item);
        break;
    }
    if (!fits)
        appendMismatch(out, conversion, item);
}

} // namespace logstore
