// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/ascii.h"
#include "platform/predicate/syntax/operators.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace predicate {

constexpr bool isWordStart(char32_t c)
{
    return isAsciiLetter(c) || c == U'_';
}
constexpr bool isWordPart(char32_t c)
{
    return isWordStart(c) || isAsciiDigit(c);
}

enum class TokenKind : std::uint8_t {
    End,
    Word,     ///< an identifier or a reserved word
    Escaped,  ///< #identifier
    Special,  ///< @identifier
    Variable, ///< $identifier
    Function, ///< modulus:by: before its parenthesis
    Number,
    Text,
    Format, ///< %@ and its like
    Symbol
};

/// The meaning of a reserved word or symbol; those of one meaning share one sign.
enum class Sign : std::uint8_t {
    None,
    // Comparisons, in the order of Operator.
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    In,
    Contains,
    BeginsWith,
    EndsWith,
    Like,
    Matches,
    Between,
    UtiConformsTo,
    UtiEquals,
    // Compounds and quantifiers.
    And,
    Or,
    Not,
    Any,
    All,
    NoneOf,
    TruePredicate,
    FalsePredicate,
    // Values and forms.
    Nil,
    True,
    False,
    Self,
    Cast,
    Ternary,
    Reserved,    ///< a reserved word without a use here
    Unsupported, ///< a reserved word of an unsupported construct
    // Symbols.
    Plus,
    Minus,
    Times,
    Divide,
    Power,
    OpenParenthesis,
    CloseParenthesis,
    OpenBrace,
    CloseBrace,
    OpenBracket,
    CloseBracket,
    Comma,
    Dot
};

struct Token
{
    TokenKind kind = TokenKind::End;
    Sign sign = Sign::None;
    std::size_t position = 0; ///< of the first character, in UTF-16 units
    std::size_t end = 0;
};

/// The sign of a reserved word, in any case; None for other words.
Sign reservedSign(std::u16string_view word);

/// The longest symbol that the text begins with; length 0 when there is none.
struct Symbol
{
    Sign sign = Sign::None;
    std::size_t length = 0;
};
Symbol leadingSymbol(std::u16string_view text);

std::optional<Operator> comparisonOperator(Sign sign);

} // namespace predicate
