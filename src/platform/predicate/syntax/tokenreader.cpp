// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/tokenreader.h"

#include "platform/predicate/text/sentences.h"
#include "platform/predicate/text/utf16.h"

namespace predicate {

namespace {

constexpr int deepest = 200; // open parentheses, braces, brackets, NOT and unary minus together

const std::vector<std::string_view>& operatorWords()
{
    static const std::vector<std::string_view> words = {
        "CONTAINS", "BEGINSWITH", "ENDSWITH", "LIKE", "MATCHES", "BETWEEN", "IN"};
    return words;
}

} // namespace

bool TokenReader::accept(Sign sign)
{
    if (!at(sign))
        return false;
    ++m_index;
    return true;
}

bool TokenReader::expect(Sign sign)
{
    if (accept(sign))
        return true;
    failNotClosed(sign);
    return false;
}

Node TokenReader::take(NodeKind kind)
{
    Node node;
    node.kind = kind;
    node.position = token().position;
    node.end = token().end;
    if (token().kind != TokenKind::End)
        ++m_index;
    return node;
}

Node& TokenReader::finish(Node& node) const
{
    if (m_index > 0)
        node.end = m_tokens[m_index - 1].end;
    return node;
}

bool TokenReader::enter()
{
    if (m_depth == deepest) {
        failAtToken("The predicate is nested too deeply.");
        return false;
    }
    ++m_depth;
    return true;
}

Node TokenReader::fail(std::size_t position, std::string sentence)
{
    if (!m_error)
        m_error = PredicateError{Stage::Parse, position, std::move(sentence)};
    m_index = m_tokens.size() - 1;
    return {};
}

/// The token in quotation marks; operators, reserved words and texts without.
std::string TokenReader::shown(const Token& token) const
{
    const bool bare = token.kind == TokenKind::Text || comparisonOperator(token.sign)
                      || (token.kind == TokenKind::Word && token.sign != Sign::None);
    return bare ? shortened(slice(token)) : quoted(slice(token));
}

std::string TokenReader::beforeToken() const
{
    if (token().kind == TokenKind::End)
        return "at the end";
    return "before " + shown(token());
}

std::string TokenReader::afterPreviousToken() const
{
    return "after " + shown(m_tokens[m_index - 1]);
}

Node TokenReader::failNoOperator(const Node& left)
{
    const std::u16string_view written = slice(token());
    const std::string source = shortened(m_text.substr(left.position, left.end - left.position));
    if (at(Sign::Not)) {
        const bool followed = comparisonOperator(next().sign).has_value();
        const std::string rest = followed ? shortened(slice(next())) + " " : "";
        return failAtToken("Put NOT before the comparison: NOT " + source + " " + rest
                           + (next().sign == Sign::In ? "{…}." : "…"));
    }
    if (token().kind == TokenKind::Word && token().sign == Sign::None) {
        const std::string_view meant = nearest(utf8(written), operatorWords());
        const std::string hint =
            meant.empty() ? std::string() : " Did you mean " + std::string(meant) + "?";
        return failAtToken(quoted(written) + " is not an operator." + hint);
    }
    if (at(Sign::OpenParenthesis) && left.kind == NodeKind::Name)
        return failAtToken("The name of a function ends with a colon: " + source + ":(…).");
    if (token().kind == TokenKind::End)
        return failAtToken("An operator such as == is missing after “" + source + "”.");
    return failAtToken("An operator such as == is missing " + beforeToken() + ".");
}

Node TokenReader::failNoExpression()
{
    const bool comparisonFollows =
        comparisonOperator(next().sign).has_value() || next().sign == Sign::Dot;
    if (token().kind == TokenKind::Word) {
        if (at(Sign::Unsupported))
            return failAtToken(shortened(slice(token())) + " is not supported in log predicates.");
        const bool joint = at(Sign::And) || at(Sign::Or) || at(Sign::Not);
        if (at(Sign::Reserved) || (comparisonFollows && !joint))
            return failReserved();
    }
    const bool first = m_index == 0;
    if (first || at(Sign::And) || at(Sign::Or) || comparisonOperator(token().sign))
        return failAtToken("Something to compare is missing " + beforeToken() + ".");
    return failAtToken("Something to compare is missing " + afterPreviousToken() + ".");
}

void TokenReader::failNotClosed(Sign close)
{
    const bool otherElement = token().kind != TokenKind::End && token().kind != TokenKind::Symbol;
    switch (close) {
    case Sign::CloseParenthesis:
        if (at(Sign::Comma))
            failAtToken("A list stands in braces, like {1, 2}.");
        else
            failAtToken("A closing parenthesis is missing.");
        break;
    case Sign::CloseBrace:
        failAtToken(otherElement ? "A comma is missing " + beforeToken() + "."
                                 : "A closing brace is missing.");
        break;
    case Sign::CloseBracket: failAtToken("A closing bracket is missing."); break;
    default: failAtToken("A comma is missing " + beforeToken() + "."); break;
    }
}

void TokenReader::failAfterEnd()
{
    switch (token().sign) {
    case Sign::CloseParenthesis: failAtToken("This closing parenthesis has no opening one."); break;
    case Sign::CloseBrace: failAtToken("This closing brace has no opening one."); break;
    case Sign::CloseBracket: failAtToken("This closing bracket has no opening one."); break;
    default:
        failAtToken(quoted(slice(token()))
                    + " can't follow here; join comparisons with AND or OR.");
        break;
    }
}

Node TokenReader::failReserved()
{
    const std::string word = shortened(slice(token()));
    return failAtToken(quoted(slice(token())) + " is a reserved word; write #" + word
                       + " to name a field.");
}

} // namespace predicate
