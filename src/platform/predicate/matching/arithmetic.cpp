// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/arithmetic.h"

#include "platform/base/arithmetic.h"
#include "platform/base/timeunits.h"

#include <cmath>
#include <limits>
#include <optional>

namespace predicate {

namespace {

constexpr Int128 lowest = std::numeric_limits<std::int64_t>::min();
constexpr Int128 highest = std::numeric_limits<std::uint64_t>::max();

Int128 wide(const Value& integer)
{
    return integer.kind() == Value::Kind::Unsigned ? Int128(integer.asUnsigned())
                                                   : Int128(integer.asInteger());
}

Value narrow(Int128 value)
{
    if (value < lowest || value > highest)
        return {};
    return value < 0 ? Value::integer(static_cast<std::int64_t>(value))
                     : Value::unsignedInteger(static_cast<std::uint64_t>(value));
}

Value realPower(double base, double exponent)
{
    return Value::real(std::pow(base, exponent));
}

std::optional<Int128> product(Int128 left, Int128 right)
{
    Int128 result = 0;
    if (__builtin_mul_overflow(left, right, &result))
        return std::nullopt;
    return result;
}

Value integerPower(Int128 base, Int128 exponent)
{
    if (exponent < 0)
        return realPower(static_cast<double>(base), static_cast<double>(exponent));
    if (base == 0 || base == 1)
        return narrow(exponent == 0 ? 1 : base);
    if (base == -1)
        return Value::integer(exponent % 2 == 0 ? 1 : -1);
    Int128 result = 1;
    for (Int128 i = 0; i < exponent; ++i) {
        const auto next = product(result, base);
        if (!next || *next < lowest || *next > highest)
            return {}; // |base| is at least 2, so this comes within 64 rounds
        result = *next;
    }
    return narrow(result);
}

Value integers(char sign, Int128 left, Int128 right)
{
    switch (sign) {
    case '+': return narrow(left + right);
    case '-': return narrow(left - right);
    case '*': {
        const auto result = product(left, right);
        return result ? narrow(*result) : Value();
    }
    case '/': return right == 0 ? Value() : narrow(left / right);
    case '%': return right == 0 ? Value() : narrow(left % right);
    default: return integerPower(left, right);
    }
}

Value reals(char sign, double left, double right)
{
    switch (sign) {
    case '+': return Value::real(left + right);
    case '-': return Value::real(left - right);
    case '*': return Value::real(left * right);
    case '/': return right == 0 ? Value() : Value::real(left / right);
    case '%': return right == 0 ? Value() : Value::real(std::fmod(left, right));
    default: return realPower(left, right);
    }
}

std::optional<Int128> inNanoseconds(const Value& number)
{
    if (number.kind() == Value::Kind::Seconds)
        return number.asNanoseconds();
    return number.isInteger() ? product(wide(number), nanosecondsPerSecond) : std::nullopt;
}

/// Sums and differences of decimal fractions and whole numbers stay exact.
std::optional<Value> decimals(char sign, const Value& left, const Value& right)
{
    const bool fraction =
        left.kind() == Value::Kind::Seconds || right.kind() == Value::Kind::Seconds;
    if (!fraction || (sign != '+' && sign != '-'))
        return std::nullopt;
    const auto a = inNanoseconds(left);
    const auto b = inNanoseconds(right);
    if (!a || !b)
        return std::nullopt;
    const Int128 result = sign == '+' ? *a + *b : *a - *b;
    if (result < lowest || result > std::numeric_limits<std::int64_t>::max())
        return std::nullopt;
    return Value::seconds(static_cast<std::int64_t>(result));
}

} // namespace

Value arithmetic(char sign, const Value& left, const Value& right)
{
    if (left.isUnknown() || right.isUnknown())
        return Value::unknown();
    if (!left.isNumber() || !right.isNumber())
        return {};
    if (left.isInteger() && right.isInteger())
        return integers(sign, wide(left), wide(right));
    if (const auto exact = decimals(sign, left, right))
        return *exact;
    return reals(sign, toReal(left), toReal(right));
}

Value negated(const Value& number)
{
    return number.kind() == Value::Kind::Real ? Value::real(-number.asReal())
                                              : arithmetic('-', Value::integer(0), number);
}

Value bitwise(char sign, const Value& left, const Value& right)
{
    if (!left.isInteger() || !right.isInteger())
        return {};
    const Int128 a = wide(left);
    const Int128 b = wide(right);
    switch (sign) {
    case '&': return narrow(a & b);
    case '|': return narrow(a | b);
    default: return narrow(a ^ b);
    }
}

} // namespace predicate
