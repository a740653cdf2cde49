// SPDX-License-Identifier: MIT
#include "platform/base/ascii.h"
#include "platform/predicate/literals.h"
#include "platform/predicate/parser.h"
#include "platform/predicate/sentences.h"
#include "platform/predicate/utf16.h"

#include <limits>

using namespace std::string_view_literals;

namespace predicate {

namespace {

constexpr char powerSign = '^'; // stands for ** where one character is wanted

/// The number with the other sign, when it has one.
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

/// The kind of a word that is reserved inside brackets, else Index.
NodeKind indexWord(std::u16string_view word)
{
    if (equalIgnoringAsciiCase(word, u"first"sv))
        return NodeKind::First;
    if (equalIgnoringAsciiCase(word, u"last"sv))
        return NodeKind::Last;
    return equalIgnoringAsciiCase(word, u"size"sv) ? NodeKind::Size : NodeKind::Index;
}

} // namespace

char Parser::arithmeticSign() const
{
    switch (token().sign) {
    case Sign::Plus: return '+';
    case Sign::Minus: return '-';
    case Sign::Times: return '*';
    case Sign::Divide: return '/';
    case Sign::Power: return powerSign;
    default: return '\0';
    }
}

Node Parser::chain(Part part, std::string_view signs, Allow condition)
{
    Node first = (this->*part)(condition);
    const auto isJoined = [&] {
        return arithmeticSign() != '\0' && signs.find(arithmeticSign()) != std::string_view::npos;
    };
    if (isCondition(first) || failed() || !isJoined())
        return first;
    Node node;
    node.kind = NodeKind::Chain;
    node.position = first.position;
    node.children.push_back(std::move(first));
    while (isJoined()) {
        node.name += arithmeticSign();
        ++m_index;
        node.children.push_back((this->*part)(Allow::OneSort));
    }
    return finish(node);
}

Node Parser::expression(Allow condition)
{
    return chain(&Parser::product, "+-", condition);
}

Node Parser::product(Allow condition)
{
    return chain(&Parser::power, "*/", condition);
}

Node Parser::power(Allow condition)
{
    return chain(&Parser::unary, "^", condition);
}

Node Parser::unary(Allow condition)
{
    if (!at(Sign::Minus))
        return postfix(condition);
    if (!enter())
        return {};
    Node node = take(NodeKind::Negation);
    Node operand = unary(Allow::OneSort);
    leave();
    if (operand.kind == NodeKind::Constant) {
        if (auto number = negated(operand.value)) {
            node.kind = NodeKind::Constant;
            node.value = *std::move(number);
            return finish(node);
        }
    }
    node.children.push_back(std::move(operand));
    return finish(node);
}

Node Parser::postfix(Allow condition)
{
    const bool parenthesized = at(Sign::OpenParenthesis);
    Node base = primary(condition);
    if (failed() || isCondition(base) || (!at(Sign::Dot) && !at(Sign::OpenBracket)))
        return base;
    Node node;
    if (base.kind == NodeKind::Path && !parenthesized) {
        node = std::move(base); // a key path given as an argument goes on
    } else {
        node.kind = NodeKind::Path;
        node.position = base.position;
        node.children.push_back(std::move(base));
    }
    while (!failed() && (at(Sign::Dot) || at(Sign::OpenBracket))) {
        if (at(Sign::OpenBracket)) {
            node.children.push_back(index());
            continue;
        }
        ++m_index;
        const TokenKind kind = token().kind;
        const bool member = kind == TokenKind::Escaped || kind == TokenKind::Special
                            || (kind == TokenKind::Word && token().sign == Sign::None);
        if (!member)
            return failAtToken("A name is missing " + afterPreviousToken() + ".");
        node.children.push_back(name(NodeKind::Member, kind == TokenKind::Escaped ? 1 : 0));
    }
    return finish(node);
}

Node Parser::index()
{
    if (!enter())
        return {};
    Node node = take(NodeKind::Index);
    const NodeKind special =
        token().kind == TokenKind::Word ? indexWord(slice(token())) : NodeKind::Index;
    if (special != NodeKind::Index) {
        node.kind = special;
        ++m_index;
    } else {
        node.children.push_back(expression(Allow::OneSort));
    }
    expect(Sign::CloseBracket);
    leave();
    return finish(node);
}

Node Parser::primary(Allow condition)
{
    switch (token().kind) {
    case TokenKind::Word: return word();
    case TokenKind::Escaped: return name(NodeKind::Name, 1);
    case TokenKind::Special: return name(NodeKind::Name, 0);
    case TokenKind::Variable: return name(NodeKind::Variable, 1);
    case TokenKind::Function: return call();
    case TokenKind::Number: return number();
    case TokenKind::Text: return text();
    case TokenKind::Format: return formatArgument();
    case TokenKind::Symbol:
        if (at(Sign::OpenParenthesis))
            return parenthesis(condition);
        if (at(Sign::OpenBrace))
            return list();
        break;
    case TokenKind::End: break;
    }
    return failNoExpression();
}

Node Parser::word()
{
    const auto constant = [this](auto value) {
        Node node = take(NodeKind::Constant);
        node.value = Constant{value};
        return node;
    };
    switch (token().sign) {
    case Sign::Nil: return constant(Nil{});
    case Sign::True: return constant(true);
    case Sign::False: return constant(false);
    case Sign::Self: return take(NodeKind::Self);
    case Sign::Cast: return cast();
    case Sign::Ternary: return ternary();
    case Sign::None: break;
    default: return failNoExpression();
    }
    if (next().sign == Sign::OpenParenthesis) {
        if (equalIgnoringAsciiCase(slice(token()), u"random"sv))
            return failAtToken("random() is not supported in log predicates.");
        if (equalIgnoringAsciiCase(slice(token()), u"now"sv)) {
            Node node = take(NodeKind::Now);
            ++m_index;
            expect(Sign::CloseParenthesis);
            return finish(node);
        }
    }
    return name(NodeKind::Name, 0);
}

Node Parser::name(NodeKind kind, std::size_t prefixLength)
{
    std::string text = utf8(slice(token()).substr(prefixLength));
    Node node = take(kind);
    node.name = std::move(text);
    return node;
}

Node Parser::number()
{
    const auto value = numberValue(slice(token()));
    Node node = take(NodeKind::Constant);
    node.value = value.value_or(Constant{});
    return node;
}

Node Parser::text()
{
    const std::u16string_view quotedText = slice(token());
    Node node = take(NodeKind::Constant);
    node.value = Constant{textValue(quotedText.substr(1, quotedText.size() - 2))};
    return node;
}

Node Parser::parenthesis(Allow condition)
{
    if (!enter())
        return {};
    ++m_index;
    Node inside = condition == Allow::EitherSort ? disjunction(Allow::EitherSort)
                                                 : expression(Allow::OneSort);
    const bool either = condition == Allow::EitherSort && !failed();
    if (either && !isCondition(inside) && token().kind == TokenKind::Word)
        return failNoOperator(inside);
    if (either && isCondition(inside) && token().kind != TokenKind::End
        && !at(Sign::CloseParenthesis)) {
        failAfterEnd();
        return {};
    }
    expect(Sign::CloseParenthesis);
    leave();
    return inside;
}

/// Expressions with commas between them up to the closing sign, which is used up.
std::vector<Node> Parser::elements(Sign close)
{
    std::vector<Node> elements;
    if (accept(close))
        return elements;
    do
        elements.push_back(expression(Allow::OneSort));
    while (!failed() && accept(Sign::Comma));
    expect(close);
    return elements;
}

Node Parser::list()
{
    if (!enter())
        return {};
    Node node = take(NodeKind::List);
    node.children = elements(Sign::CloseBrace);
    leave();
    return finish(node);
}

Node Parser::call()
{
    Node node = name(NodeKind::Call, 0);
    if (!enter())
        return {};
    ++m_index;
    node.children = elements(Sign::CloseParenthesis);
    leave();
    return finish(node);
}

Node Parser::cast()
{
    if (next().sign != Sign::OpenParenthesis)
        return reserved();
    Node node = take(NodeKind::Cast);
    if (!enter())
        return {};
    ++m_index;
    node.children.push_back(expression(Allow::OneSort));
    if (expect(Sign::Comma))
        node.children.push_back(expression(Allow::OneSort));
    expect(Sign::CloseParenthesis);
    leave();
    return finish(node);
}

Node Parser::ternary()
{
    if (next().sign != Sign::OpenParenthesis)
        return reserved();
    Node node = take(NodeKind::Ternary);
    if (!enter())
        return {};
    ++m_index;
    node.children.push_back(disjunction(Allow::OneSort));
    for (int branch = 0; branch < 2 && expect(Sign::Comma); ++branch)
        node.children.push_back(expression(Allow::OneSort));
    expect(Sign::CloseParenthesis);
    leave();
    return finish(node);
}

Node Parser::reserved()
{
    const std::string word = shortened(slice(token()));
    return failAtToken(quoted(slice(token())) + " is a reserved word; write #" + word
                       + " to name a field.");
}

} // namespace predicate
