// SPDX-License-Identifier: MIT
#include "platform/base/timeunits.h"
#include "platform/predicate/arithmetic.h"
#include "platform/predicate/functions.h"
#include "platform/predicate/literals.h"
#include "platform/predicate/utf16.h"

#include <array>
#include <charconv>
#include <cmath>

namespace predicate {

namespace {

constexpr std::int64_t referenceDate = 978307200 * nanosecondsPerSecond; // 2001-01-01 00:00:00 UTC

Value dateFromReference(std::int64_t nanoseconds)
{
    std::int64_t date = 0;
    return __builtin_add_overflow(nanoseconds, referenceDate, &date) ? Value() : Value::date(date);
}

Value dateFromNumber(const Value& number)
{
    std::int64_t nanoseconds = 0;
    switch (number.kind()) {
    case Value::Kind::Seconds: return dateFromReference(number.asNanoseconds());
    case Value::Kind::Integer:
        if (__builtin_mul_overflow(number.asInteger(), nanosecondsPerSecond, &nanoseconds))
            return {};
        return dateFromReference(nanoseconds);
    case Value::Kind::Real: {
        const double rounded =
            std::round(number.asReal() * static_cast<double>(nanosecondsPerSecond));
        constexpr double beyond = 9223372036854775808.0;
        return std::fabs(rounded) < beyond ? dateFromReference(static_cast<std::int64_t>(rounded))
                                           : Value();
    }
    default: return {};
    }
}

Value numberFromDate(std::int64_t date)
{
    std::int64_t nanoseconds = 0;
    if (__builtin_sub_overflow(date, referenceDate, &nanoseconds))
        return Value::real((static_cast<double>(date) - static_cast<double>(referenceDate))
                           / static_cast<double>(nanosecondsPerSecond));
    return Value::seconds(nanoseconds);
}

/// The text is a number as predicates write them, with a sign if wanted.
Value numberFromText(std::string_view text)
{
    const bool minus = !text.empty() && text.front() == '-';
    const bool plus = !text.empty() && text.front() == '+';
    const std::u16string digits = utf16(text.substr(minus || plus ? 1 : 0));
    const std::size_t length = numberLength(digits);
    if (length == 0 || length != digits.size())
        return {};
    const auto number = numberValue(digits);
    const Value value = number ? valueOf(*number) : Value();
    return minus ? negated(value) : value;
}

/// A decimal fraction without zeros at its end.
std::string decimalText(std::int64_t nanoseconds)
{
    const bool minus = nanoseconds < 0;
    const std::uint64_t magnitude = minus ? 0 - static_cast<std::uint64_t>(nanoseconds)
                                          : static_cast<std::uint64_t>(nanoseconds);
    const auto perSecond = static_cast<std::uint64_t>(nanosecondsPerSecond);
    std::string fraction = std::to_string(magnitude % perSecond + perSecond).substr(1);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return (minus ? "-" : "") + std::to_string(magnitude / perSecond) + '.' + fraction;
}

std::string numberText(const Value& number)
{
    switch (number.kind()) {
    case Value::Kind::Integer: return std::to_string(number.asInteger());
    case Value::Kind::Unsigned: return std::to_string(number.asUnsigned());
    case Value::Kind::Seconds: return decimalText(number.asNanoseconds());
    default: break;
    }
    std::array<char, 32> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), number.asReal());
    return {digits.data(), end};
}

} // namespace

Value castToDate(const Value& value, const UtcOffset& utcOffset)
{
    if (!value.isText())
        return dateFromNumber(value);
    const auto date = readDate(value.asText(), utcOffset);
    return date ? Value::date(*date) : Value();
}

Value castToNumber(const Value& value)
{
    if (value.isNumber())
        return value;
    if (value.kind() == Value::Kind::Date)
        return numberFromDate(value.asNanoseconds());
    return value.isText() ? numberFromText(value.asText()) : Value();
}

Value castToText(const Value& value, Match& match)
{
    if (value.isText() || !value.isNumber())
        return value.isText() ? value : Value();
    std::string& text = match.newText();
    text = numberText(value);
    return Value::text(text);
}

Value textLength(const Value& text)
{
    return text.isText() ? Value::integer(static_cast<std::int64_t>(utf16Length(text.asText())))
                         : Value();
}

} // namespace predicate
