// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/expressionparser.h"

#include <tl/expected.hpp>

namespace predicate {

/// Recursive descent over the tokens of a predicate. A parenthesis at the start of a comparison may
/// open a condition or an expression: its content decides, so nothing is parsed twice.
class Parser
{
public:
    Parser(std::u16string_view text, std::vector<Token> tokens, const Arguments& arguments)
        : m_tokens(text, std::move(tokens))
        , m_expressions(m_tokens, arguments, [this](Allow allow) { return disjunction(allow); })
    {
    }

    tl::expected<Node, PredicateError> run();

private:
    Node disjunction(Allow expression);
    Node conjunction(Allow expression);
    Node compound(NodeKind kind, Sign joint, Allow expression);
    Node operand(Sign joint, Allow expression);
    Node negation(Allow expression);
    Node comparison(Allow expression);
    void finishComparison(Node& node);
    Quantifier quantifier();
    Options options();

    TokenReader m_tokens;
    ExpressionParser m_expressions;
};

} // namespace predicate
