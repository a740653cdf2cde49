// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/binder.h"

#include "platform/predicate/binding/comparisoncompiler.h"
#include "platform/predicate/binding/comparisontypes.h"

namespace predicate {

tl::expected<ConditionPtr, PredicateError> Binder::run(const Node& root)
{
    ConditionPtr bound = condition(root);
    if (m_context.failed())
        return tl::unexpected(*m_context.error());
    return bound;
}

ConditionPtr Binder::condition(const Node& node)
{
    switch (node.kind) {
    case NodeKind::And:
    case NodeKind::Or: return compound(node);
    case NodeKind::Not: return std::make_unique<NotCondition>(condition(node.children.front()));
    case NodeKind::Comparison: return comparison(node);
    default: return std::make_unique<FixedCondition>(node.kind == NodeKind::True);
    }
}

ConditionPtr Binder::compound(const Node& node)
{
    Conditions parts;
    for (const Node& child : node.children) {
        parts.push_back(condition(child));
        if (m_context.failed())
            break;
    }
    const auto joint =
        node.kind == NodeKind::And ? CompoundCondition::Joint::And : CompoundCondition::Joint::Or;
    return std::make_unique<CompoundCondition>(joint, std::move(parts));
}

ConditionPtr Binder::comparison(const Node& node)
{
    ComparisonTypes types(m_context, node);
    const Sides sides = bindSides(node, types);
    if (!m_context.failed())
        types.checkSides(*sides.left, *sides.right);
    if (m_context.failed())
        return std::make_unique<FixedCondition>(false);
    return ComparisonCompiler(m_context, node).compiled(sides.left, sides.right);
}

Binder::Sides Binder::bindSides(const Node& node, ComparisonTypes& types)
{
    Readings readings = readingsOf(node);
    Sides sides;
    sides.left = m_terms.term(node.children[0], readings.left);
    if (!m_context.failed())
        types.checkLeft(*sides.left);
    readings.right.text = sides.left->type().isText() ? &node.children[1] : nullptr;
    sides.right = m_terms.term(node.children[1], readings.right);
    if (comparesValues(node.comparison) && !m_context.failed())
        readDates(node, sides);
    return sides;
}

/// Binds a side again, with its texts as dates, when the other side is a date.
void Binder::readDates(const Node& node, Sides& sides)
{
    const Type& left = sides.left->type();
    const Type& right = sides.right->type();
    const bool textInText = (node.comparison == Operator::In && !right.isList())
                            || (node.comparison == Operator::Contains && !left.isList());
    if (textInText)
        return;
    const bool textsLeft = (left.compared() & type::text) != 0;
    const bool textsRight = (right.compared() & type::text) != 0;
    Reading dates;
    dates.dates = true;
    if (left.compared() == type::date && textsRight)
        sides.right = m_terms.term(node.children[1], dates);
    else if (right.compared() == type::date && textsLeft)
        sides.left = m_terms.term(node.children[0], dates);
}

} // namespace predicate
