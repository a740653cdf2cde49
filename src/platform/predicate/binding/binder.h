// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/termbinder.h"

#include <tl/expected.hpp>

namespace predicate {

class ComparisonTypes;

/// Binds a tree to the fields of log entries: resolves names, checks types, compiles comparisons
/// and folds constants, from left to right.
class Binder
{
public:
    explicit Binder(BindContext& context)
        : m_context(context)
        , m_terms(context, [this](const Node& node) { return condition(node); })
    {
    }

    tl::expected<ConditionPtr, PredicateError> run(const Node& root);

private:
    struct Sides
    {
        TermPtr left;
        TermPtr right;
    };

    ConditionPtr condition(const Node& node);
    ConditionPtr compound(const Node& node);
    ConditionPtr comparison(const Node& node);
    Sides bindSides(const Node& node, ComparisonTypes& types);
    void readDates(const Node& node, Sides& sides);

    BindContext& m_context;
    TermBinder m_terms;
};

} // namespace predicate
