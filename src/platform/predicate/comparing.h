// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/match.h"
#include "platform/predicate/operators.h"

namespace predicate {

/// The outcome for an entry, or for all entries of which only some fields are known.
enum class Truth : std::uint8_t { False, True, Unknown };

inline Truth truth(bool value)
{
    return value ? Truth::True : Truth::False;
}
inline Truth negation(Truth value)
{
    return value == Truth::Unknown ? value : truth(value == Truth::False);
}

/// Whether two values are in a relation. Never fails: what does not fit together is unequal and
/// in no other relation.
Truth compare(
    Operator comparison, const Value& left, const Value& right, Folding folding, Match& match);

Truth areEqual(const Value& left, const Value& right, Folding folding, Match& match);

} // namespace predicate
