// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/value.h"

namespace predicate {

/// `sign` is one of + - * / ^ (power) and % (modulus). Integers give exact integers. The result is
/// nil when an operand is not a number, or when the result has no value or does not fit.
Value arithmetic(char sign, const Value& left, const Value& right);

Value negated(const Value& number);

/// `sign` is one of & | and ^ (exclusive or); integers only.
Value bitwise(char sign, const Value& left, const Value& right);

} // namespace predicate
