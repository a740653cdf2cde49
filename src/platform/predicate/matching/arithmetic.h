// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/value.h"

namespace predicate {

/// `sign` is one of + - * / ^ (power) and % (modulus). Whole numbers stay whole and exact; nil for
/// nil, for what is no number, and where the result has no value or does not fit.
Value arithmetic(char sign, const Value& left, const Value& right);

Value negated(const Value& number);

/// `sign` is one of & | and ^ (exclusive or); whole numbers only.
Value bitwise(char sign, const Value& left, const Value& right);

} // namespace predicate
