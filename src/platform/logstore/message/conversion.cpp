// SPDX-License-Identifier: MIT
#include "platform/logstore/message/conversion.h"

#include "platform/base/utf8.h"
#include "platform/logstore/message/errornames.h"
#include "platform/logstore/message/textoutput.h"

#include <algorithm>
#include <cmath>

namespace logstore {

namespace {

/// Pads what was written from `start` on to the field's width, which counts bytes.
void pad(std::string& out, std::size_t start, const Field& field)
{
    if (field.width <= 0)
        return;
    const std::size_t length = out.size() - start;
    const auto width = static_cast<std::size_t>(field.width);
    if (length >= width)
        return;
    if (field.leftJustified)
        out.append(width - length, ' ');
    else
        out.insert(start, width - length, ' ');
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

/// The digits; none of a zero with precision 0.
std::string_view significant(std::string_view digits, const Field& field)
{
    return field.precision == 0 && digits == "0" ? std::string_view() : digits;
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
    appendDigits(out, field, sign, significant({digits, end}, field));
}

void appendUnsigned(std::string& out, const Field& field, Bytes bytes, int base)
{
    const Integer value = integerOf(field.conversion, bytes, false);
    char digits[25] = "0"; // room for the zero of an octal number
    char* const start = digits + 1;
    char* end = std::to_chars(start, digits + sizeof digits, value.bits, base).ptr;
    const bool upperCase = field.conversion.letter == 'X';
    if (upperCase)
        std::transform(start, end, start,
                       [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    const bool alternate = field.conversion.alternate;
    if (alternate && base == 8)
        return appendDigits(out, field, "", {value.bits == 0 ? start : digits, end});
    const bool prefixed = alternate && base == 16 && value.bits != 0;
    appendDigits(out, field, prefixed ? (upperCase ? "0X" : "0x") : "",
                 significant({start, end}, field));
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
    const bool isNumber = !std::isnan(value);
    std::string format = "%";
    if (field.leftJustified)
        format += '-';
    if (conversion.plusSign && isNumber)
        format += '+';
    if (conversion.spaceSign && isNumber)
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
    appendFormatted(out, format.c_str(), isNumber ? value : std::fabs(value));
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
    const bool limited = field.conversion.letter != '@' && field.precision > 0;
    if (!item.bytes.empty() || item.state == ItemState::Cut)
        appendItemText(out, item,
                       limited ? static_cast<std::size_t>(field.precision)
                               : std::string_view::npos);
    else if (field.precision != 0)
        out += "(null)";
    pad(out, start, field);
}

void appendBytes(std::string& out, const Field& field, const Item& item)
{
    const std::size_t start = out.size();
    out += '\'';
    for (std::size_t i = 0; i < item.bytes.size(); ++i) {
        if (i > 0)
            out += ' ';
        appendHex(out, item.bytes.subspan(i, 1), true);
    }
    out += item.state == ItemState::Cut ? "…'" : "'";
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

void appendByLetter(std::string& out, const Field& field, const Item& item)
{
    const ItemKind kind = item.kind();
    const bool isText = item.isText() || kind == ItemKind::Data;
    bool fits = false;
    switch (field.conversion.letter) {
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
            appendBytes(out, field, item);
        break;
    case 'm':
        fits = item.isNumber();
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
        appendMismatch(out, field.conversion.text, item);
}

} // namespace logstore
