// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/expressionparser.h"

#include "platform/base/ascii.h"
#include "platform/predicate/syntax/literals.h"
#include "platform/predicate/text/utf16.h"

#include <limits>

using namespace std::string_view_literals;

namespace predicate {

namespace {

constexpr char powerSign = '^'; // ** as one character

/// The number negated, if it is one and fits.
std::optional<Constant> negated(const Constant& constant)
{
    constexpr std::uint64_t lowest = std::uint64_t{1} << 63U;
    if (const auto* real = std::get_if<double>(&constant.value))
        return Constant{-*real};
    if (const auto* integer = std::get_if<std::int64_t>(&constant.value)) {
        if (*integer == std::numeric_limits<std::int64_t>::min())
            return Constant{lowest};
        return Constant{-*integer};
    }
    const auto* large = std::get_if<std::uint64_t>(&constant.value);
    if (large != nullptr && *large == lowest)
        return Constant{std::numeric_limits<std::int64_t>::min()};
    return std::nullopt;
}

/// The kind of a word that is reserved inside brackets; Index for other words.
NodeKind indexWord(std::u16string_view word)
{
    if (equalIgnoringAsciiCase(word, u"first"sv))
        return NodeKind::First;
    if (equalIgnoringAsciiCase(word, u"last"sv))
        return NodeKind::Last;
    return equalIgnoringAsciiCase(word, u"size"sv) ? NodeKind::Size : NodeKind::Index;
}

} // namespace

char ExpressionParser::arithmeticSign() const
{
    switch (m_tokens.token().sign) {
    case Sign::Plus: return '+';
    case Sign::Minus: return '-';
    case Sign::Times: return '*';
    case Sign::Divide: return '/';
    case Sign::Power: return powerSign;
    default: return '\0';
    }
}

Node ExpressionParser::chain(Part part, std::string_view signs, Allow condition)
{
    Node first = (this->*part)(condition);
    const auto isJoined = [&] {
        return arithmeticSign() != '\0' && signs.find(arithmeticSign()) != std::string_view::npos;
    };
    if (isCondition(first) || m_tokens.failed() || !isJoined())
        return first;
    Node node;
    node.kind = NodeKind::Chain;
    node.position = first.position;
    node.children.push_back(std::move(first));
    while (isJoined()) {
        node.name += arithmeticSign();
        m_tokens.skip();
        node.children.push_back((this->*part)(Allow::OneSort));
    }
    return m_tokens.finish(node);
}

Node ExpressionParser::expression(Allow condition)
{
    return chain(&ExpressionParser::product, "+-", condition);
}

Node ExpressionParser::product(Allow condition)
{
    return chain(&ExpressionParser::power, "*/", condition);
}

Node ExpressionParser::power(Allow condition)
{
    return chain(&ExpressionParser::unary, "^", condition);
}

Node ExpressionParser::unary(Allow condition)
{
    if (!m_tokens.at(Sign::Minus))
        return postfix(condition);
    if (!m_tokens.enter())
        return {};
    Node node = m_tokens.take(NodeKind::Negation);
    Node operand = unary(Allow::OneSort);
    m_tokens.leave();
    if (operand.kind == NodeKind::Constant) {
        if (auto number = negated(operand.value)) {
            node.kind = NodeKind::Constant;
            node.value = *std::move(number);
            return m_tokens.finish(node);
        }
    }
    node.children.push_back(std::move(operand));
    return m_tokens.finish(node);
}

Node ExpressionParser::postfix(Allow condition)
{
    const bool parenthesized = m_tokens.at(Sign::OpenParenthesis);
    Node base = primary(condition);
    if (m_tokens.failed() || isCondition(base)
        || (!m_tokens.at(Sign::Dot) && !m_tokens.at(Sign::OpenBracket)))
        return base;
    Node node;
    if (base.kind == NodeKind::Path && !parenthesized) {
        node = std::move(base); // continues a key path given as an argument
    } else {
        node.kind = NodeKind::Path;
        node.position = base.position;
        node.children.push_back(std::move(base));
    }
    while (!m_tokens.failed() && (m_tokens.at(Sign::Dot) || m_tokens.at(Sign::OpenBracket))) {
        if (m_tokens.at(Sign::OpenBracket)) {
            node.children.push_back(index());
            continue;
        }
        m_tokens.skip();
        const TokenKind kind = m_tokens.token().kind;
        const bool member = kind == TokenKind::Escaped || kind == TokenKind::Special
                            || (kind == TokenKind::Word && m_tokens.token().sign == Sign::None);
        if (!member)
            return m_tokens.failAtToken("A name is missing " + m_tokens.afterPreviousToken() + ".");
        node.children.push_back(name(NodeKind::Member, kind == TokenKind::Escaped ? 1 : 0));
    }
    return m_tokens.finish(node);
}

Node ExpressionParser::index()
{
    if (!m_tokens.enter())
        return {};
    Node node = m_tokens.take(NodeKind::Index);
    const NodeKind special = m_tokens.token().kind == TokenKind::Word
                                 ? indexWord(m_tokens.slice(m_tokens.token()))
                                 : NodeKind::Index;
    if (special != NodeKind::Index) {
        node.kind = special;
        m_tokens.skip();
    } else {
        node.children.push_back(expression(Allow::OneSort));
    }
    m_tokens.expect(Sign::CloseBracket);
    m_tokens.leave();
    return m_tokens.finish(node);
}

Node ExpressionParser::primary(Allow condition)
{
    switch (m_tokens.token().kind) {
    case TokenKind::Word: return word();
    case TokenKind::Escaped: return name(NodeKind::Name, 1);
    case TokenKind::Special: return name(NodeKind::Name, 0);
    case TokenKind::Variable: return name(NodeKind::Variable, 1);
    case TokenKind::Function: return call();
    case TokenKind::Number: return number();
    case TokenKind::Text: return text();
    case TokenKind::Format: return m_arguments.next(m_tokens);
    case TokenKind::Symbol:
        if (m_tokens.at(Sign::OpenParenthesis))
            return parenthesis(condition);
        if (m_tokens.at(Sign::OpenBrace))
            return list();
        break;
    case TokenKind::End: break;
    }
    return m_tokens.failNoExpression();
}

Node ExpressionParser::word()
{
    const auto constant = [this](auto value) {
        Node node = m_tokens.take(NodeKind::Constant);
        node.value = Constant{value};
        return node;
    };
    switch (m_tokens.token().sign) {
    case Sign::Nil: return constant(Nil{});
    case Sign::True: return constant(true);
    case Sign::False: return constant(false);
    case Sign::Self: return m_tokens.take(NodeKind::Self);
    case Sign::Cast: return cast();
    case Sign::Ternary: return ternary();
    case Sign::None: break;
    default: return m_tokens.failNoExpression();
    }
    if (m_tokens.next().sign == Sign::OpenParenthesis) {
        if (equalIgnoringAsciiCase(m_tokens.slice(m_tokens.token()), u"random"sv))
            return m_tokens.failAtToken("random() is not supported in log predicates.");
        if (equalIgnoringAsciiCase(m_tokens.slice(m_tokens.token()), u"now"sv)) {
            Node node = m_tokens.take(NodeKind::Now);
            m_tokens.skip();
            m_tokens.expect(Sign::CloseParenthesis);
            return m_tokens.finish(node);
        }
    }
    return name(NodeKind::Name, 0);
}

Node ExpressionParser::name(NodeKind kind, std::size_t prefixLength)
{
    std::string text = utf8(m_tokens.slice(m_tokens.token()).substr(prefixLength));
    Node node = m_tokens.take(kind);
    node.name = std::move(text);
    return node;
}

Node ExpressionParser::number()
{
    const auto value = numberValue(m_tokens.slice(m_tokens.token()));
    Node node = m_tokens.take(NodeKind::Constant);
    node.value = value.value_or(Constant{});
    return node;
}

Node ExpressionParser::text()
{
    const std::u16string_view quotedText = m_tokens.slice(m_tokens.token());
    Node node = m_tokens.take(NodeKind::Constant);
    node.value = Constant{textValue(quotedText.substr(1, quotedText.size() - 2))};
    return node;
}

Node ExpressionParser::parenthesis(Allow condition)
{
    if (!m_tokens.enter())
        return {};
    m_tokens.skip();
    Node inside = condition == Allow::EitherSort ? m_condition(Allow::EitherSort)
                                                 : expression(Allow::OneSort);
    const bool either = condition == Allow::EitherSort && !m_tokens.failed();
    if (either && !isCondition(inside) && m_tokens.token().kind == TokenKind::Word)
        return m_tokens.failNoOperator(inside);
    if (either && isCondition(inside) && !m_tokens.atEnd()
        && !m_tokens.at(Sign::CloseParenthesis)) {
        m_tokens.failAfterEnd();
        return {};
    }
    m_tokens.expect(Sign::CloseParenthesis);
    m_tokens.leave();
    return inside;
}

/// Parses expressions separated by commas, and the closing sign.
std::vector<Node> ExpressionParser::elements(Sign close)
{
    std::vector<Node> elements;
    if (m_tokens.accept(close))
        return elements;
    do
        elements.push_back(expression(Allow::OneSort));
    while (!m_tokens.failed() && m_tokens.accept(Sign::Comma));
    m_tokens.expect(close);
    return elements;
}

Node ExpressionParser::list()
{
    if (!m_tokens.enter())
        return {};
    Node node = m_tokens.take(NodeKind::List);
    node.children = elements(Sign::CloseBrace);
    m_tokens.leave();
    return m_tokens.finish(node);
}

Node ExpressionParser::call()
{
    Node node = name(NodeKind::Call, 0);
    if (!m_tokens.enter())
        return {};
    m_tokens.skip();
    node.children = elements(Sign::CloseParenthesis);
    m_tokens.leave();
    return m_tokens.finish(node);
}

Node ExpressionParser::cast()
{
    if (m_tokens.next().sign != Sign::OpenParenthesis)
        return m_tokens.failReserved();
    Node node = m_tokens.take(NodeKind::Cast);
    if (!m_tokens.enter())
        return {};
    m_tokens.skip();
    node.children.push_back(expression(Allow::OneSort));
    if (m_tokens.expect(Sign::Comma))
        node.children.push_back(expression(Allow::OneSort));
    m_tokens.expect(Sign::CloseParenthesis);
    m_tokens.leave();
    return m_tokens.finish(node);
}

Node ExpressionParser::ternary()
{
    if (m_tokens.next().sign != Sign::OpenParenthesis)
        return m_tokens.failReserved();
    Node node = m_tokens.take(NodeKind::Ternary);
    if (!m_tokens.enter())
        return {};
    m_tokens.skip();
    node.children.push_back(m_condition(Allow::OneSort));
    for (int branch = 0; branch < 2 && m_tokens.expect(Sign::Comma); ++branch)
        node.children.push_back(expression(Allow::OneSort));
    m_tokens.expect(Sign::CloseParenthesis);
    m_tokens.leave();
    return m_tokens.finish(node);
}

} // namespace predicate
