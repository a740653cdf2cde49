// SPDX-License-Identifier: MIT
#include "platform/predicate/binder.h"

#include "platform/predicate/sentences.h"

namespace predicate {

tl::expected<ConditionPtr, PredicateError> Binder::run()
{
    ConditionPtr root = condition(m_tree.root);
    if (m_error)
        return tl::unexpected(*std::move(m_error));
    return root;
}

void Binder::fail(std::size_t position, std::string sentence)
{
    if (!m_error)
        m_error = PredicateError{Stage::Bind, position, std::move(sentence)};
}

/// Nil in place of what could not be bound: it fits everywhere.
TermPtr Binder::failedTerm(std::size_t position, std::string sentence)
{
    fail(position, std::move(sentence));
    return std::make_shared<ConstantTerm>(Value(), Type{});
}

/// The node as it is written; of an argument, its text.
std::string Binder::source(const Node& node) const
{
    const std::u16string_view written =
        std::u16string_view(m_tree.text).substr(node.position, node.end - node.position);
    const auto* text = std::get_if<std::string>(&node.value.value);
    const bool argument = !written.empty() && written.front() == u'%';
    return argument && text != nullptr ? quoted(std::string_view(*text)) : shortened(written);
}

std::string Binder::sourceIs(const Node& node, Types types) const
{
    return source(node) + " is " + described(types);
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
        if (failed())
            break;
    }
    const auto joint =
        node.kind == NodeKind::And ? CompoundCondition::Joint::And : CompoundCondition::Joint::Or;
    return std::make_unique<CompoundCondition>(joint, std::move(parts));
}

} // namespace predicate
