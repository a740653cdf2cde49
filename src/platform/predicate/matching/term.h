// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/match.h"
#include "platform/predicate/matching/types.h"

#include <memory>
#include <vector>

namespace predicate {

/// A compiled expression, which has a value for each entry.
class Term
{
public:
    explicit Term(Type type, int cost) : m_type(type), m_cost(cost) {}
    virtual ~Term() = default;
    Term(const Term&) = delete;
    Term& operator=(const Term&) = delete;
    Term(Term&&) = delete;
    Term& operator=(Term&&) = delete;

    virtual Value value(Match& match) const = 0;
    /// The value, when it is the same for every entry.
    virtual const Value* constant() const { return nullptr; }
    /// The elements of a list that is written out; null for any other term.
    virtual const std::vector<std::shared_ptr<const Term>>* elements() const { return nullptr; }

    const Type& type() const { return m_type; }
    /// The cost of the value, in rough multiples of the cheapest one.
    int cost() const { return m_cost; }

private:
    Type m_type;
    int m_cost;
};

/// Shared where one expression stands in several conditions.
using TermPtr = std::shared_ptr<const Term>;
using Terms = std::vector<TermPtr>;

/// Sums of costs stop here, so that they never overflow.
constexpr int highestCost = 1 << 20;

int costOf(const Terms& terms);
bool areConstant(const Terms& terms);

} // namespace predicate
