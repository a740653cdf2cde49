// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/predicateerror.h"
#include "platform/predicate/token.h"
#include "platform/predicate/tree.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace predicate {

/// Recursive descent over the tokens, once from left to right. A parenthesis at the start of a
/// comparison may open a condition or an expression: what stands inside decides, so nothing is read
/// twice. The first failure is kept and moves the parser to the end of the text, where nothing
/// fits.
class Parser
{
public:
    Parser(std::u16string_view text, std::vector<Token> tokens, const Arguments& arguments)
        : m_text(text)
        , m_tokens(std::move(tokens))
        , m_arguments(arguments)
    {
    }

    tl::expected<Node, PredicateError> run();

private:
    /// Whether a lone expression, or a condition in parentheses, is welcome as well.
    enum class Allow : bool { OneSort, EitherSort };

    // Conditions (parser.cpp).
    Node disjunction(Allow expression);
    Node conjunction(Allow expression);
    Node compound(NodeKind kind, Sign joint, Allow expression);
    Node operand(Sign joint, Allow expression);
    Node negation(Allow expression);
    Node comparison(Allow expression);
    void finishComparison(Node& node);
    Quantifier quantifier();
    Options options();

    // Expressions (expressionparser.cpp).
    Node expression(Allow condition);
    Node product(Allow condition);
    Node power(Allow condition);
    Node unary(Allow condition);
    Node postfix(Allow condition);
    Node primary(Allow condition);
    using Part = Node (Parser::*)(Allow);
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
    Node reserved();
    Node index();
    std::vector<Node> elements(Sign close);

    // Format arguments (formatarguments.cpp).
    Node formatArgument();
    Node argumentNode(const Constant& argument, const Token& format, int depth);
    Node keyPath(const std::string& path, const Token& format);

    // Tokens.
    const Token& token() const { return m_tokens[m_index]; }
    const Token& next() const
    {
        return m_tokens[m_index + (m_index + 1 < m_tokens.size() ? 1 : 0)];
    }
    std::u16string_view slice(const Token& token) const
    {
        return m_text.substr(token.position, token.end - token.position);
    }
    bool at(Sign sign) const { return token().sign == sign; }
    bool accept(Sign sign);
    bool expect(Sign sign);
    Node take(NodeKind kind);
    Node& finish(Node& node) const;
    bool enter();
    void leave() { --m_depth; }

    // Failures (parsererrors.cpp).
    bool failed() const { return m_error.has_value(); }
    Node fail(std::size_t position, std::string sentence);
    Node failAtToken(std::string sentence) { return fail(token().position, std::move(sentence)); }
    Node failNoOperator(const Node& left);
    Node failNoExpression();
    void failNotClosed(Sign close);
    void failAfterEnd();
    std::string shown(const Token& token) const;
    std::string beforeToken() const;
    std::string afterPreviousToken() const;

    std::u16string_view m_text;
    std::vector<Token> m_tokens;
    const Arguments& m_arguments;
    std::size_t m_index = 0;
    std::size_t m_argument = 0;
    int m_depth = 0;
    std::optional<PredicateError> m_error;
};

} // namespace predicate
