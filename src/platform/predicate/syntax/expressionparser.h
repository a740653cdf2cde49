// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/formatarguments.h"
#include "platform/predicate/syntax/tokenreader.h"

#include <functional>
#include <string_view>
#include <vector>

namespace predicate {

/// Whether both conditions and expressions are allowed at a place, or only one of them.
enum class Allow : bool { OneSort, EitherSort };

/// Recursive descent over the tokens of expressions.
class ExpressionParser
{
public:
    using ConditionParser = std::function<Node(Allow)>;

    /// `condition` parses the conditions inside expressions.
    ExpressionParser(TokenReader& tokens, const Arguments& arguments, ConditionParser condition)
        : m_tokens(tokens)
        , m_arguments(arguments)
        , m_condition(std::move(condition))
    {
    }

    Node expression(Allow condition);

private:
    Node product(Allow condition);
    Node power(Allow condition);
    Node unary(Allow condition);
    Node postfix(Allow condition);
    Node primary(Allow condition);
    using Part = Node (ExpressionParser::*)(Allow);
    Node chain(Part part, std::string_view signs, Allow condition);
    char arithmeticSign() const;
    Node word();
    Node number();
    Node text();
    Node name(NodeKind kind, std::size_t prefixLength);
    Node parenthesis(Allow condition);
    Node list();
    Node call();
    Node cast();
    Node ternary();
    Node index();
    std::vector<Node> elements(Sign close);

    TokenReader& m_tokens;
    FormatArguments m_arguments;
    ConditionParser m_condition;
};

} // namespace predicate
