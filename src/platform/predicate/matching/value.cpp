// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/value.h"

#include "platform/base/timeunits.h"

#include <cmath>

namespace predicate {

namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

template <typename T>
int order(T left, T right)
{
    return left < right ? -1 : right < left ? 1 : 0;
}

/// Exact: the real is split into its whole part, which fits an integer, and its fraction.
int compareWithReal(const Value& integer, double real)
{
    if (real >= twoTo64)
        return -1;
    if (real < -twoTo63)
        return 1;
    const double whole = std::floor(real);
    int result = 0;
    if (whole >= twoTo63)
        result = integer.kind() == Value::Kind::Unsigned
                     ? order(integer.asUnsigned(), static_cast<std::uint64_t>(whole))
                     : -1;
    else
        result = integer.kind() == Value::Kind::Unsigned
                     ? 1
                     : order(integer.asInteger(), static_cast<std::int64_t>(whole));
    return result == 0 && real > whole ? -1 : result;
}

int compareIntegers(const Value& left, const Value& right)
{
    const bool leftLarge = left.kind() == Value::Kind::Unsigned;
    const bool rightLarge = right.kind() == Value::Kind::Unsigned;
    if (leftLarge || rightLarge)
        return leftLarge && rightLarge ? order(left.asUnsigned(), right.asUnsigned())
               : leftLarge             ? 1
                                       : -1;
    return order(left.asInteger(), right.asInteger());
}

/// `seconds` is not a whole number, so the two are never equal.
int compareSecondsWithInteger(const Value& seconds, const Value& integer)
{
    const std::int64_t nanoseconds = seconds.asNanoseconds();
    const bool below = nanoseconds < 0;
    const std::int64_t whole = nanoseconds / nanosecondsPerSecond - (below ? 1 : 0);
    return compareIntegers(Value::integer(whole), integer) < 0 ? -1 : 1;
}

} // namespace

Value Value::real(double value)
{
    if (!std::isfinite(value))
        return {};
    Value out(Kind::Real, 0);
    out.m_real = value;
    return out;
}

Value Value::seconds(std::int64_t nanoseconds)
{
    if (nanoseconds % nanosecondsPerSecond == 0)
        return integer(nanoseconds / nanosecondsPerSecond);
    return Value(Kind::Seconds, nanoseconds);
}

Value Value::list(std::span<const Value> elements)
{
    Value out(Kind::List, 0);
    out.m_list = {elements.data(), elements.size()};
    return out;
}

Value valueOf(const Constant& constant)
{
    struct Visitor
    {
        Value operator()(Nil) const { return {}; }
        Value operator()(bool value) const { return Value::integer(value ? 1 : 0); }
        Value operator()(std::int64_t value) const { return Value::integer(value); }
        Value operator()(std::uint64_t value) const { return Value::unsignedInteger(value); }
        Value operator()(double value) const { return Value::real(value); }
        Value operator()(const std::string& value) const { return Value::text(value); }
        Value operator()(Date value) const { return Value::date(value.nanoseconds); }
        Value operator()(const Constant::List&) const { return {}; }
    };
    return std::visit(Visitor{}, constant.value);
}

double toReal(const Value& number)
{
    switch (number.kind()) {
    case Value::Kind::Real: return number.asReal();
    case Value::Kind::Unsigned: return static_cast<double>(number.asUnsigned());
    case Value::Kind::Seconds:
        return static_cast<double>(number.asNanoseconds())
               / static_cast<double>(nanosecondsPerSecond);
    default: return static_cast<double>(number.asInteger());
    }
}

int compareNumbers(const Value& left, const Value& right)
{
    using Kind = Value::Kind;
    if (left.isInteger() && right.isInteger())
        return compareIntegers(left, right);
    if (left.kind() == Kind::Seconds && right.kind() == Kind::Seconds)
        return order(left.asNanoseconds(), right.asNanoseconds());
    if (left.kind() == Kind::Seconds && right.isInteger())
        return compareSecondsWithInteger(left, right);
    if (left.isInteger() && right.kind() == Kind::Seconds)
        return -compareSecondsWithInteger(right, left);
    if (left.isInteger() && right.kind() == Kind::Real)
        return compareWithReal(left, right.asReal());
    if (left.kind() == Kind::Real && right.isInteger())
        return -compareWithReal(right, left.asReal());
    // Few decimal fractions are exact reals, so both are compared as the nearest reals.
    return order(toReal(left), toReal(right));
}

} // namespace predicate
