// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/match.h"
#include "platform/predicate/syntax/operators.h"

namespace predicate {

/// Whether the comparison holds for two values. It never fails: values of different types are
/// unequal, and no other comparison holds for them.
Truth compare(
    Operator comparison, const Value& left, const Value& right, Folding folding, Match& match);

Truth areEqual(const Value& left, const Value& right, Folding folding, Match& match);

} // namespace predicate
