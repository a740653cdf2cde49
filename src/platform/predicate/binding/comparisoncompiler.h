// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/bindcontext.h"
#include "platform/predicate/matching/conditions.h"

namespace predicate {

/// Makes the condition that evaluates a comparison fastest. Its sides are bound and fit it.
class ComparisonCompiler
{
public:
    ComparisonCompiler(BindContext& context, const Node& comparison)
        : m_context(context)
        , m_node(comparison)
    {
    }

    /// Fails when a constant pattern is not valid.
    ConditionPtr compiled(const TermPtr& left, const TermPtr& right);

private:
    ConditionPtr one(const TermPtr& left, const TermPtr& right);
    ConditionPtr quantified(const TermPtr& left, const TermPtr& right);
    ConditionPtr mixedMembership(const TermPtr& left, const TermPtr& right);
    ConditionPtr expression(const TermPtr& left, const TermPtr& right, Folding folding);

    BindContext& m_context;
    const Node& m_node;
};

} // namespace predicate
