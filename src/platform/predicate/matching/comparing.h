// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/match.h"
#include "platform/predicate/syntax/operators.h"

namespace predicate {

/// Whether two values are in a relation. Never fails: what does not fit together is unequal and
/// in no other relation.
Truth compare(
    Operator comparison, const Value& left, const Value& right, Folding folding, Match& match);

Truth areEqual(const Value& left, const Value& right, Folding folding, Match& match);

} // namespace predicate
