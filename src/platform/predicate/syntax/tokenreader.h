// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/predicateerror.h"
#include "platform/predicate/syntax/token.h"
#include "platform/predicate/syntax/tree.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace predicate {

/// Reads tokens from left to right, and keeps the first failure. After a failure it is at the end
/// of the text.
class TokenReader
{
public:
    TokenReader(std::u16string_view text, std::vector<Token> tokens)
        : m_text(text)
        , m_tokens(std::move(tokens))
    {
    }

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
    bool atEnd() const { return token().kind == TokenKind::End; }

    void skip() { ++m_index; }
    bool accept(Sign sign);
    /// Fails when the token is another.
    bool expect(Sign sign);
    /// A node that begins with the token, which is read.
    Node take(NodeKind kind);
    /// Ends the node with the last token that was read.
    Node& finish(Node& node) const;

    /// One level deeper. Fails at the token when that is too deep.
    bool enter();
    void leave() { --m_depth; }

    bool failed() const { return m_error.has_value(); }
    const std::optional<PredicateError>& error() const { return m_error; }
    // These return an empty node, for the caller to return.
    Node fail(std::size_t position, std::string sentence);
    Node failAtToken(std::string sentence) { return fail(token().position, std::move(sentence)); }
    Node failNoOperator(const Node& left);
    Node failNoExpression();
    Node failReserved();
    void failAfterEnd();
    std::string afterPreviousToken() const;

private:
    void failNotClosed(Sign close);
    std::string shown(const Token& token) const;
    std::string beforeToken() const;

    std::u16string_view m_text;
    std::vector<Token> m_tokens;
    std::size_t m_index = 0;
    int m_depth = 0;
    std::optional<PredicateError> m_error;
};

} // namespace predicate
