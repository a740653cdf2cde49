// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/bindcontext.h"

namespace predicate {

/// Checks that the types of the sides fit the operator of a comparison, and fails if not.
class ComparisonTypes
{
public:
    ComparisonTypes(BindContext& context, const Node& comparison)
        : m_context(context)
        , m_node(comparison)
    {
    }

    /// Whether the operator takes the left side, whatever the right side is.
    void checkLeft(const Term& left);
    void checkSides(const Term& left, const Term& right);

private:
    bool checkBounds(const Term& right);

    BindContext& m_context;
    const Node& m_node;
};

} // namespace predicate
