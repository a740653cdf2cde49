// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/parser.h"

#include "platform/predicate/text/sentences.h"

namespace predicate {

tl::expected<Node, PredicateError> Parser::run()
{
    Node root = disjunction(Allow::OneSort);
    if (!m_tokens.failed() && !m_tokens.atEnd())
        m_tokens.failAfterEnd();
    if (m_tokens.failed())
        return tl::unexpected(*m_tokens.error());
    return root;
}

Node Parser::disjunction(Allow expression)
{
    return compound(NodeKind::Or, Sign::Or, expression);
}

Node Parser::conjunction(Allow expression)
{
    return compound(NodeKind::And, Sign::And, expression);
}

Node Parser::operand(Sign joint, Allow expression)
{
    return joint == Sign::Or ? conjunction(expression) : negation(expression);
}

Node Parser::compound(NodeKind kind, Sign joint, Allow expression)
{
    Node first = operand(joint, expression);
    if (!m_tokens.at(joint))
        return first;
    if (!isCondition(first))
        return m_tokens.failNoOperator(first);
    Node node;
    node.kind = kind;
    node.position = first.position;
    node.children.push_back(std::move(first));
    while (m_tokens.accept(joint))
        node.children.push_back(operand(joint, Allow::OneSort));
    return m_tokens.finish(node);
}

Node Parser::negation(Allow expression)
{
    if (!m_tokens.at(Sign::Not))
        return comparison(expression);
    if (!m_tokens.enter())
        return {};
    Node node = m_tokens.take(NodeKind::Not);
    node.children.push_back(negation(Allow::OneSort));
    m_tokens.leave();
    return m_tokens.finish(node);
}

Quantifier Parser::quantifier()
{
    if (m_tokens.accept(Sign::Any))
        return Quantifier::Any;
    if (m_tokens.accept(Sign::All))
        return Quantifier::All;
    if (m_tokens.accept(Sign::NoneOf))
        return Quantifier::None;
    return Quantifier::One;
}

Node Parser::comparison(Allow expressionAlone)
{
    if (m_tokens.at(Sign::TruePredicate) || m_tokens.at(Sign::FalsePredicate))
        return m_tokens.take(m_tokens.at(Sign::TruePredicate) ? NodeKind::True : NodeKind::False);
    Node node;
    node.kind = NodeKind::Comparison;
    node.position = m_tokens.token().position;
    node.quantifier = quantifier();
    const bool quantified = node.quantifier != Quantifier::One;
    Node left = m_expressions.expression(quantified ? Allow::OneSort : Allow::EitherSort);
    if (m_tokens.failed() || isCondition(left))
        return left;
    if (!comparisonOperator(m_tokens.token().sign)) {
        const bool allowed = expressionAlone == Allow::EitherSort && !quantified;
        return allowed ? left : m_tokens.failNoOperator(left);
    }
    node.children.push_back(std::move(left));
    finishComparison(node);
    return node;
}

/// Parses from the operator to the end.
void Parser::finishComparison(Node& node)
{
    node.operatorPosition = m_tokens.token().position;
    node.comparison = comparisonOperator(m_tokens.token().sign).value_or(Operator::Equal);
    m_tokens.skip();
    node.options = options();
    node.children.push_back(m_expressions.expression(Allow::OneSort));
    m_tokens.finish(node);
}

Options Parser::options()
{
    Options options;
    if (!m_tokens.accept(Sign::OpenBracket))
        return options;
    const std::u16string_view letters = m_tokens.slice(m_tokens.token());
    if (m_tokens.token().kind == TokenKind::End || m_tokens.at(Sign::CloseBracket)) {
        m_tokens.failAtToken("An option is missing after [; the options are c, d, n and l.");
        return options;
    }
    for (const char16_t letter : letters) {
        switch (asciiLower(letter)) {
        case u'c': options.caseless = true; break;
        case u'd': options.markless = true; break;
        case u'n': options.normalized = true; break;
        case u'l': options.localized = true; break;
        default:
            m_tokens.failAtToken(quoted(letters) + ": the options are c, d, n and l.");
            return options;
        }
    }
    m_tokens.skip();
    m_tokens.expect(Sign::CloseBracket);
    return options;
}

} // namespace predicate
