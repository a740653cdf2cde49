// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/names.h"
#include "platform/predicate/matching/conditions.h"

#include <functional>

namespace predicate {

/// Binds expressions from left to right, operands first.
class TermBinder
{
public:
    using ConditionBinder = std::function<ConditionPtr(const Node&)>;

    /// `condition` binds the conditions inside expressions.
    TermBinder(BindContext& context, ConditionBinder condition)
        : m_context(context)
        , m_names(context)
        , m_condition(std::move(condition))
    {
    }

    TermPtr term(const Node& node, Reading reading);

private:
    TermPtr term(const Node& node) { return term(node, Reading{}); }
    Terms terms(const std::vector<Node>& nodes, Reading reading);
    Terms terms(const std::vector<Node>& nodes) { return terms(nodes, Reading{}); }

    TermPtr list(const Node& node, Reading reading);
    TermPtr chain(const Node& node, Reading reading);
    TermPtr negation(const Node& node);
    TermPtr ternary(const Node& node);
    TermPtr path(const Node& node, Reading reading);
    TermPtr member(const Node& path, TermPtr base, const Node& member);
    ElementTerm::Place place(const Node& index);
    TermPtr element(const Node& path, TermPtr base, std::size_t& next);
    TermPtr call(const Node& node);
    TermPtr cast(const Node& node);

    BindContext& m_context;
    NameBinder m_names;
    ConditionBinder m_condition;
};

} // namespace predicate
