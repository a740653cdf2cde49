// SPDX-License-Identifier: MIT
#include "platform/predicate/parser.h"

#include "platform/base/ascii.h"
#include "platform/predicate/sentences.h"

namespace predicate {

namespace {

constexpr int deepest = 200; // open parentheses, braces, brackets, NOT and unary minus together

} // namespace

tl::expected<Node, PredicateError> Parser::run()
{
    Node root = disjunction(Allow::OneSort);
    if (!failed() && token().kind != TokenKind::End)
        failAfterEnd();
    if (failed())
        return tl::unexpected(*std::move(m_error));
    return root;
}

bool Parser::accept(Sign sign)
{
    if (!at(sign))
        return false;
    ++m_index;
    return true;
}

bool Parser::expect(Sign sign)
{
    if (accept(sign))
        return true;
    failNotClosed(sign);
    return false;
}

/// A node that begins at the token, which is used up.
Node Parser::take(NodeKind kind)
{
    Node node;
    node.kind = kind;
    node.position = token().position;
    node.end = token().end;
    if (token().kind != TokenKind::End)
        ++m_index;
    return node;
}

/// The node ends with the last token used up.
Node& Parser::finish(Node& node) const
{
    if (m_index > 0)
        node.end = m_tokens[m_index - 1].end;
    return node;
}

/// One level deeper, for which the current token is to blame.
bool Parser::enter()
{
    if (m_depth == deepest) {
        failAtToken("The predicate is nested too deeply.");
        return false;
    }
    ++m_depth;
    return true;
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
    if (!at(joint))
        return first;
    if (!isCondition(first))
        return failNoOperator(first);
    Node node;
    node.kind = kind;
    node.position = first.position;
    node.children.push_back(std::move(first));
    while (accept(joint))
        node.children.push_back(operand(joint, Allow::OneSort));
    return finish(node);
}

Node Parser::negation(Allow expression)
{
    if (!at(Sign::Not))
        return comparison(expression);
    if (!enter())
        return {};
    Node node = take(NodeKind::Not);
    node.children.push_back(negation(Allow::OneSort));
    leave();
    return finish(node);
}

Quantifier Parser::quantifier()
{
    if (accept(Sign::Any))
        return Quantifier::Any;
    if (accept(Sign::All))
        return Quantifier::All;
    if (accept(Sign::NoneOf))
        return Quantifier::None;
    return Quantifier::One;
}

Node Parser::comparison(Allow expressionAlone)
{
    if (at(Sign::TruePredicate) || at(Sign::FalsePredicate))
        return take(at(Sign::TruePredicate) ? NodeKind::True : NodeKind::False);
    Node node;
    node.kind = NodeKind::Comparison;
    node.position = token().position;
    node.quantifier = quantifier();
    const bool quantified = node.quantifier != Quantifier::One;
    Node left = expression(quantified ? Allow::OneSort : Allow::EitherSort);
    if (failed() || isCondition(left))
        return left;
    if (!comparisonOperator(token().sign)) {
        const bool welcome = expressionAlone == Allow::EitherSort && !quantified;
        return welcome ? left : failNoOperator(left);
    }
    node.children.push_back(std::move(left));
    finishComparison(node);
    return node;
}

/// From the operator on.
void Parser::finishComparison(Node& node)
{
    node.operatorPosition = token().position;
    node.comparison = comparisonOperator(token().sign).value_or(Operator::Equal);
    ++m_index;
    node.options = options();
    node.children.push_back(expression(Allow::OneSort));
    finish(node);
}

Options Parser::options()
{
    Options options;
    if (!accept(Sign::OpenBracket))
        return options;
    const std::u16string_view letters = slice(token());
    if (token().kind == TokenKind::End || at(Sign::CloseBracket)) {
        failAtToken("An option is missing after [; the options are c, d, n and l.");
        return options;
    }
    for (const char16_t letter : letters) {
        switch (asciiLower(letter)) {
        case u'c': options.caseless = true; break;
        case u'd': options.markless = true; break;
        case u'n': options.normalized = true; break;
        case u'l': options.localized = true; break;
        default: failAtToken(quoted(letters) + ": the options are c, d, n and l."); return options;
        }
    }
    ++m_index;
    expect(Sign::CloseBracket);
    return options;
}

} // namespace predicate
