// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/lexer.h"

#include "platform/base/ascii.h"
#include "platform/base/utf8.h"
#include "platform/predicate/syntax/literals.h"
#include "platform/predicate/syntax/token.h"
#include "platform/predicate/text/sentences.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace predicate {

namespace {

/// The character in quotation marks, or “U+00A0 NO-BREAK SPACE” for an invisible one.
std::string named(char32_t character)
{
    const auto code = static_cast<UChar32>(character);
    const bool visible = u_isgraph(code) != 0;
    std::string text;
    appendCodePoint(text, character);
    if (visible)
        return quoted(std::string_view(text));
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "U+%04X", static_cast<unsigned>(code));
    std::array<char, 128> name{};
    UErrorCode status = U_ZERO_ERROR;
    u_charName(code, U_EXTENDED_CHAR_NAME, name.data(), name.size(), &status);
    const bool hasName = U_SUCCESS(status) && name.front() != '<';
    return hasName ? std::string(number.data()) + " " + name.data() : std::string(number.data());
}

/// The quotation mark to type instead of a typographic one, or 0.
char plainQuote(char32_t character)
{
    switch (character) {
    case U'“':
    case U'”':
    case U'«':
    case U'»': return '"';
    case U'‘':
    case U'’':
    case U'`': return '\'';
    default: return '\0';
    }
}

/// Letters, digits and underscores at the start of the text.
std::size_t runLength(std::u16string_view text)
{
    std::size_t length = 0;
    while (length < text.size() && isWordPart(text[length]))
        ++length;
    return length;
}

std::size_t wordLength(std::u16string_view text)
{
    return !text.empty() && isWordStart(text.front()) ? runLength(text) : 0;
}

class Lexer
{
public:
    explicit Lexer(std::u16string_view text) : m_text(text) {}

    Tokens run();

private:
    void next();
    void add(TokenKind kind, std::size_t length, Sign sign = Sign::None);
    void fail(std::size_t position, std::string sentence);
    std::u16string_view rest() const { return m_text.substr(m_position); }

    void number(std::size_t length);
    void text();
    void prefixed(TokenKind kind);
    void word();
    void format();
    void unexpectedCharacter();
    std::size_t functionNameLength(std::size_t firstWord) const;

    std::u16string_view m_text;
    std::size_t m_position = 0;
    Tokens m_tokens;
};

Tokens Lexer::run()
{
    while (!m_tokens.error) {
        m_position = std::min(m_text.find_first_not_of(asciiBlanks, m_position), m_text.size());
        if (m_position == m_text.size())
            break;
        next();
    }
    add(TokenKind::End, 0);
    return std::move(m_tokens);
}

void Lexer::add(TokenKind kind, std::size_t length, Sign sign)
{
    m_tokens.found.push_back({kind, sign, m_position, m_position + length});
    m_position += length;
}

void Lexer::fail(std::size_t position, std::string sentence)
{
    m_tokens.error = PredicateError{Stage::Parse, position, std::move(sentence)};
}

void Lexer::next()
{
    const char16_t first = m_text[m_position];
    if (const std::size_t length = numberLength(rest()))
        return number(length);
    if (isWordStart(first))
        return word();
    switch (first) {
    case u'"':
    case u'\'': return text();
    case u'#': return prefixed(TokenKind::Escaped);
    case u'@': return prefixed(TokenKind::Special);
    case u'$': return prefixed(TokenKind::Variable);
    case u'%': return format();
    default: break;
    }
    const Symbol symbol = leadingSymbol(rest());
    if (symbol.length > 0)
        add(TokenKind::Symbol, symbol.length, symbol.sign);
    else
        unexpectedCharacter();
}

void Lexer::number(std::size_t length)
{
    const std::u16string_view number = rest().substr(0, length);
    const std::size_t letters = runLength(rest().substr(length));
    if (letters > 0)
        fail(m_position, quoted(rest().substr(0, length + letters)) + " is not a number.");
    else if (!numberValue(number))
        fail(m_position, quoted(number) + " is too large a number.");
    else
        add(TokenKind::Number, length);
}

void Lexer::text()
{
    const char16_t quote = m_text[m_position];
    for (std::size_t i = m_position + 1; i < m_text.size(); ++i) {
        if (m_text[i] == u'\\')
            ++i;
        else if (m_text[i] == quote)
            return add(TokenKind::Text, i + 1 - m_position);
    }
    fail(m_position, std::string("This text has no closing ") + static_cast<char>(quote) + ".");
}

void Lexer::prefixed(TokenKind kind)
{
    const std::size_t length = wordLength(rest().substr(1));
    if (length == 0)
        unexpectedCharacter();
    else
        add(kind, 1 + length);
}

/// The length of `first:second:` when a parenthesis follows it, else 0.
std::size_t Lexer::functionNameLength(std::size_t firstWord) const
{
    const std::u16string_view text = rest();
    std::size_t length = 0;
    std::size_t part = firstWord;
    while (part > 0 && length + part < text.size() && text[length + part] == u':') {
        length += part + 1;
        part = wordLength(text.substr(length));
    }
    const std::size_t next = text.find_first_not_of(asciiBlanks, length);
    const bool called = length > 0 && next != std::u16string_view::npos && text[next] == u'(';
    return called ? length : 0;
}

void Lexer::word()
{
    const std::size_t length = wordLength(rest());
    if (const std::size_t function = functionNameLength(length))
        return add(TokenKind::Function, function);
    for (const std::u16string_view hyphenated : {u"uti-conforms-to", u"uti-equals"}) {
        const std::u16string_view candidate = rest().substr(0, hyphenated.size());
        if (equalIgnoringAsciiCase(candidate, hyphenated)
            && runLength(rest().substr(candidate.size())) == 0)
            return add(TokenKind::Word, candidate.size(), reservedSign(hyphenated));
    }
    add(TokenKind::Word, length, reservedSign(rest().substr(0, length)));
}

void Lexer::format()
{
    const std::u16string_view text = rest();
    const std::size_t conversion = std::min(text.find_first_not_of(u"hlqzjt", 1), text.size());
    const char16_t letter = conversion < text.size() ? text[conversion] : u'\0';
    const bool plain = conversion == 1 && (letter == u'@' || letter == u'K' || letter == u's');
    const bool numeric =
        std::u16string_view(u"diouxXeEfFgGaA").find(letter) != std::u16string_view::npos;
    if (plain || numeric)
        return add(TokenKind::Format, conversion + 1);
    std::size_t shown = conversion;
    if (shown < text.size())
        U16_FWD_1(text, shown, text.size());
    fail(m_position, quoted(text.substr(0, shown))
                         + " can't be used here; the format arguments are %@, %K, %s, %d and %f.");
}

void Lexer::unexpectedCharacter()
{
    std::size_t end = m_position;
    UChar32 character = 0;
    U16_NEXT_OR_FFFD(m_text, end, m_text.size(), character);
    if (rest().substr(0, 2) == u":=")
        return fail(m_position, "Assignments are not supported in log predicates.");
    std::string sentence = named(static_cast<char32_t>(character));
    if (const char quote = plainQuote(static_cast<char32_t>(character)))
        sentence = shortened(m_text.substr(m_position, end - m_position))
                   + " is not a quotation mark here; type " + quote + ".";
    else if (u_isUWhiteSpace(character) != 0)
        sentence += " can't be used here; type a blank.";
    else if (u_isalpha(character) != 0)
        sentence += " can't be used here; texts need quotes.";
    else
        sentence += " can't be used here.";
    fail(m_position, std::move(sentence));
}

} // namespace

Tokens tokens(std::u16string_view text)
{
    if (text.find_first_not_of(asciiBlanks) == std::u16string_view::npos)
        return {{Token{}}, PredicateError{Stage::Parse, 0, "The predicate is empty."}};
    return Lexer(text).run();
}

} // namespace predicate
