// SPDX-License-Identifier: MIT
#include "platform/predicate/text/wildcard.h"

#include "platform/base/utf8.h"

namespace predicate {

namespace {

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The start of the character that ends before `end`.
std::size_t previousCharacter(std::string_view text, std::size_t end)
{
    std::size_t start = end - 1;
    while (start > 0 && isContinuation(text[start]))
        --start;
    return start;
}

} // namespace

Wildcard::Wildcard(std::string_view pattern, Folding folding) : m_pieces{Piece{std::string()}}
{
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '*') {
            m_pieces.emplace_back(1);
        } else if (c == '?') {
            m_pieces.back().emplace_back();
        } else {
            const bool escaped = c == '\\' && i + 1 < pattern.size();
            i += escaped ? 1 : 0;
            m_pieces.back().back() += pattern[i];
        }
    }
    for (Piece& piece : m_pieces) {
        for (std::string& text : piece)
            text = folded(text, folding);
    }
}

std::optional<Wildcard::Plain> Wildcard::plain(std::string_view pattern)
{
    const Wildcard whole(pattern, {});
    const std::vector<Piece>& pieces = whole.m_pieces;
    Plain plain;
    std::size_t first = 0;
    std::size_t last = pieces.size() - 1;
    const auto isEmpty = [&](std::size_t i) {
        return pieces[i].size() == 1 && pieces[i].front().empty();
    };
    while (first < last && isEmpty(first)) {
        plain.starBefore = true;
        ++first;
    }
    while (last > first && isEmpty(last)) {
        plain.starAfter = true;
        --last;
    }
    if (first != last || pieces[first].size() != 1)
        return std::nullopt;
    plain.text = pieces[first].front();
    if (plain.text.empty() && plain.starBefore)
        return std::nullopt; // matches all texts, but no text contains the empty one
    return plain;
}

/// The end of the piece, if it matches at `start`.
std::optional<std::size_t>
Wildcard::matchForward(const Piece& piece, std::string_view text, std::size_t start)
{
    std::size_t at = start;
    for (std::size_t i = 0; i < piece.size(); ++i) {
        if (i > 0) {
            if (at == text.size())
                return std::nullopt;
            nextCharacter(text, at);
        }
        if (text.compare(at, piece[i].size(), piece[i]) != 0)
            return std::nullopt;
        at += piece[i].size();
    }
    return at;
}

/// The start of the piece, if it matches at the end of the text.
std::optional<std::size_t> Wildcard::matchBackward(const Piece& piece, std::string_view text)
{
    std::size_t end = text.size();
    for (std::size_t i = piece.size(); i-- > 0;) {
        const std::string& part = piece[i];
        if (part.size() > end || text.compare(end - part.size(), part.size(), part) != 0)
            return std::nullopt;
        end -= part.size();
        if (i > 0) {
            if (end == 0)
                return std::nullopt;
            end = previousCharacter(text, end);
        }
    }
    return end;
}

/// The end of the first match of the piece.
std::optional<std::size_t>
Wildcard::find(const Piece& piece, std::string_view text, std::size_t start)
{
    for (std::size_t at = start; at <= text.size();) {
        at = text.find(piece.front(), at);
        if (at == std::string_view::npos)
            return std::nullopt;
        if (const auto end = matchForward(piece, text, at))
            return end;
        if (at == text.size())
            return std::nullopt;
        nextCharacter(text, at);
    }
    return std::nullopt;
}

bool Wildcard::matches(std::string_view text) const
{
    const auto head = matchForward(m_pieces.front(), text, 0);
    if (m_pieces.size() == 1)
        return head == text.size();
    if (!head)
        return false;
    const auto tail = matchBackward(m_pieces.back(), text.substr(*head));
    if (!tail)
        return false;
    const std::string_view middle = text.substr(0, *head + *tail);
    std::size_t at = *head;
    for (std::size_t i = 1; i + 1 < m_pieces.size(); ++i) {
        const auto end = find(m_pieces[i], middle, at);
        if (!end)
            return false;
        at = *end;
    }
    return true;
}

} // namespace predicate
