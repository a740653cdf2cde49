// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/literals.h"

#include "platform/base/ascii.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace predicate {

namespace {

int digitValue(char16_t c)
{
    if (isAsciiDigit(c))
        return c - u'0';
    const char16_t lower = asciiLower(c);
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : 16;
}

std::size_t digitsLength(std::u16string_view text, int base)
{
    std::size_t length = 0;
    while (length < text.size() && digitValue(text[length]) < base)
        ++length;
    return length;
}

/// 16, 8 or 2 for `0x`, `0o`, `0b`, else 10.
int prefixedBase(std::u16string_view text)
{
    if (text.size() < 2 || text[0] != u'0')
        return 10;
    switch (asciiLower(text[1])) {
    case u'x': return 16;
    case u'o': return 8;
    case u'b': return 2;
    default: return 10;
    }
}

std::size_t exponentLength(std::u16string_view text)
{
    if (text.empty() || asciiLower(text[0]) != u'e')
        return 0;
    const std::size_t sign = text.size() > 1 && (text[1] == u'+' || text[1] == u'-') ? 1 : 0;
    const std::size_t digits = digitsLength(text.substr(1 + sign), 10);
    return digits == 0 ? 0 : 1 + sign + digits;
}

std::optional<Constant> integerValue(std::u16string_view digits, int base)
{
    std::uint64_t value = 0;
    double real = 0;
    bool exact = true;
    const auto wide = static_cast<std::uint64_t>(base);
    for (const char16_t c : digits) {
        const auto digit = static_cast<std::uint64_t>(digitValue(c));
        exact = exact && value <= (std::numeric_limits<std::uint64_t>::max() - digit) / wide;
        value = value * wide + digit;
        real = real * base + static_cast<double>(digit);
    }
    if (!exact)
        return std::isfinite(real) ? std::optional(Constant{real}) : std::nullopt;
    if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return Constant{value};
    return Constant{static_cast<std::int64_t>(value)};
}

/// The power of ten of the first digit other than 0.
long long magnitude(std::string_view number)
{
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), e);
    const std::size_t digit = number.find_first_not_of("0.");
    const auto place = static_cast<long long>(point) - static_cast<long long>(digit);
    const std::string exponent(number.substr(std::min(e + 1, number.size())));
    // strtoll() limits the exponent to its range, where a sum would overflow.
    constexpr long long furthest = std::numeric_limits<long long>::max() / 2;
    return std::clamp(std::strtoll(exponent.c_str(), nullptr, 10), -furthest, furthest)
           + (digit < point ? place - 1 : place);
}

std::optional<Constant> realValue(std::u16string_view number)
{
    const std::string ascii(number.begin(), number.end());
    double value = 0;
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    if (error == std::errc::result_out_of_range) {
        // A number that is too small is 0; one that is too large has no value.
        return magnitude(ascii) < 0 ? std::optional(Constant{0.0}) : std::nullopt;
    }
    return Constant{value};
}

/// The value of exactly `count` digits of the base.
std::optional<char32_t> escapeDigits(std::u16string_view text, std::size_t count, int base)
{
    if (text.size() < count || digitsLength(text.substr(0, count), base) < count)
        return std::nullopt;
    char32_t value = 0;
    for (const char16_t c : text.substr(0, count))
        value = value * static_cast<char32_t>(base) + static_cast<char32_t>(digitValue(c));
    return value;
}

struct Escape
{
    char16_t unit;
    std::size_t length; ///< of the text after the backslash
};

/// Reads the escape at the start of `text`, which is what follows the backslash.
Escape readEscape(std::u16string_view text)
{
    const auto numeric = [&](std::size_t skip, std::size_t count,
                             int base) -> std::optional<Escape> {
        if (const auto value = escapeDigits(text.substr(skip), count, base))
            return Escape{static_cast<char16_t>(*value), skip + count};
        return std::nullopt;
    };
    std::optional<Escape> escape;
    switch (text.front()) {
    case u'n': return {u'\n', 1};
    case u'r': return {u'\r', 1};
    case u't': return {u'\t', 1};
    case u'x':
    case u'X': escape = numeric(1, 2, 16); break;
    case u'u':
    case u'U': escape = numeric(1, 4, 16); break;
    default: escape = numeric(0, 3, 8); break;
    }
    return escape.value_or(Escape{text.front(), 1});
}

} // namespace

std::size_t numberLength(std::u16string_view text)
{
    const int base = prefixedBase(text);
    if (base != 10) {
        const std::size_t digits = digitsLength(text.substr(2), base);
        return digits == 0 ? 1 : 2 + digits;
    }
    std::size_t length = digitsLength(text, 10);
    if (length < text.size() && text[length] == u'.') {
        const std::size_t fraction = digitsLength(text.substr(length + 1), 10);
        length += fraction == 0 ? 0 : 1 + fraction;
    }
    return length == 0 ? 0 : length + exponentLength(text.substr(length));
}

std::optional<Constant> numberValue(std::u16string_view number)
{
    const int base = prefixedBase(number);
    if (base != 10)
        return integerValue(number.substr(2), base);
    if (digitsLength(number, 10) < number.size())
        return realValue(number);
    const auto value = integerValue(number, 10);
    // Rounded once; digit by digit a long number would lose precision.
    return value && std::holds_alternative<double>(value->value) ? realValue(number) : value;
}

std::string textValue(std::u16string_view inside)
{
    std::u16string out;
    out.reserve(inside.size());
    for (std::size_t i = 0; i < inside.size(); ++i) {
        const bool escaped = inside[i] == u'\\' && i + 1 < inside.size();
        if (!escaped) {
            out += inside[i];
            continue;
        }
        const Escape escape = readEscape(inside.substr(i + 1));
        out += escape.unit;
        i += escape.length;
    }
    return utf8(out);
}

} // namespace predicate
