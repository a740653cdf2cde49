// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/functions.h"

#include "platform/base/timeunits.h"
#include "platform/predicate/matching/arithmetic.h"
#include "platform/predicate/syntax/literals.h"
#include "platform/predicate/text/sentences.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <unicode/ustring.h>

namespace predicate {

namespace {

using Values = std::span<const Value>;

template <char sign>
Value twoNumbers(Values arguments, Match&)
{
    return arithmetic(sign, arguments[0], arguments[1]);
}

template <char sign>
Value twoBitPatterns(Values arguments, Match&)
{
    return bitwise(sign, arguments[0], arguments[1]);
}

Value absolute(Values arguments, Match&)
{
    const Value& number = arguments.front();
    return compareNumbers(number, Value::integer(0)) < 0 ? negated(number) : number;
}

/// Integers stay as they are.
template <double (*round)(double)>
Value rounded(Values arguments, Match&)
{
    const Value& number = arguments.front();
    return number.isInteger() ? number : Value::real(round(toReal(number)));
}

Value squareRoot(Values arguments, Match&)
{
    return Value::real(std::sqrt(toReal(arguments.front())));
}

using CaseMapping = std::int32_t (*)(
    char16_t*, std::int32_t, const char16_t*, std::int32_t, const char*, UErrorCode*);

template <CaseMapping mapping>
Value inCase(Values arguments, Match& match)
{
    constexpr std::size_t mostGrowth = 3; // UTF-16 units for one
    const std::u16string source = utf16(arguments.front().asText());
    std::u16string target(source.size() * mostGrowth + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        mapping(target.data(), static_cast<std::int32_t>(target.size()), source.data(),
                static_cast<std::int32_t>(source.size()), "", &status);
    if (U_FAILURE(status))
        return {};
    std::string& text = match.newText();
    text = utf8(std::u16string_view(target).substr(0, static_cast<std::size_t>(length)));
    return Value::text(text);
}

Value sum(Values elements, Match&)
{
    Value total = Value::integer(0);
    for (const Value& element : elements)
        total = arithmetic('+', total, element);
    return total;
}

Value count(Values elements, Match&)
{
    return Value::integer(static_cast<std::int64_t>(elements.size()));
}

template <int direction>
Value extreme(Values elements, Match&)
{
    Value result;
    for (const Value& element : elements) {
        const bool better = result.isNil() || compareNumbers(element, result) * direction > 0;
        result = better ? element : result;
    }
    return result;
}

Value average(Values elements, Match& match)
{
    const Value total = sum(elements, match);
    return total.isNil() ? total
                         : arithmetic('/', Value::real(toReal(total)), count(elements, match));
}

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

/// A number in the syntax of predicates, with an optional sign.
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

/// Seconds as a decimal fraction without trailing zeros.
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

constexpr std::array<FunctionInfo, 21> functions = {{
    {"add:to:", 2, type::number, type::integer | type::real, twoNumbers<'+'>},
    {"from:subtract:", 2, type::number, type::integer | type::real, twoNumbers<'-'>},
    {"multiply:by:", 2, type::number, type::integer | type::real, twoNumbers<'*'>},
    {"divide:by:", 2, type::number, type::integer | type::real, twoNumbers<'/'>},
    {"modulus:by:", 2, type::number, type::integer | type::real, twoNumbers<'%'>},
    {"raise:toPower:", 2, type::number, type::integer | type::real, twoNumbers<'^'>},
    {"abs:", 1, type::number, type::integer | type::real, absolute},
    {"floor:", 1, type::number, type::integer | type::real, rounded<std::floor>},
    {"ceiling:", 1, type::number, type::integer | type::real, rounded<std::ceil>},
    {"trunc:", 1, type::number, type::integer | type::real, rounded<std::trunc>},
    {"sqrt:", 1, type::number, type::real, squareRoot},
    {"lowercase:", 1, type::anyText, type::text, inCase<u_strToLower>},
    {"uppercase:", 1, type::anyText, type::text, inCase<u_strToUpper>},
    {"bitwiseAnd:with:", 2, type::wholeNumber, type::integer, twoBitPatterns<'&'>},
    {"bitwiseOr:with:", 2, type::wholeNumber, type::integer, twoBitPatterns<'|'>},
    {"bitwiseXor:with:", 2, type::wholeNumber, type::integer, twoBitPatterns<'^'>},
    {"sum:", 0, type::number, type::integer | type::real, sum},
    {"count:", 0, type::scalar | type::list, type::integer, count},
    {"min:", 0, type::number, type::integer | type::real, extreme<-1>},
    {"max:", 0, type::number, type::integer | type::real, extreme<1>},
    {"average:", 0, type::number, type::real, average},
}};

} // namespace

const FunctionInfo* functionNamed(std::string_view name)
{
    for (const FunctionInfo& function : functions) {
        if (function.name == name)
            return &function;
    }
    return nullptr;
}

std::string_view suggestedFunction(std::string_view name)
{
    std::vector<std::string_view> names;
    names.reserve(functions.size());
    for (const FunctionInfo& function : functions)
        names.push_back(function.name);
    return nearest(name, names);
}

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
