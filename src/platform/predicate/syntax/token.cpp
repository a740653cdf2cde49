// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/token.h"

#include "platform/base/ascii.h"

#include <array>
#include <string>
#include <unordered_map>

namespace predicate {

namespace {

const std::unordered_map<std::u16string, Sign>& reservedWords()
{
    static const std::unordered_map<std::u16string, Sign> words = {
        {u"and", Sign::And},
        {u"or", Sign::Or},
        {u"not", Sign::Not},
        {u"in", Sign::In},
        {u"contains", Sign::Contains},
        {u"beginswith", Sign::BeginsWith},
        {u"endswith", Sign::EndsWith},
        {u"like", Sign::Like},
        {u"matches", Sign::Matches},
        {u"between", Sign::Between},
        {u"uti-conforms-to", Sign::UtiConformsTo},
        {u"uti-equals", Sign::UtiEquals},
        {u"any", Sign::Any},
        {u"some", Sign::Any},
        {u"all", Sign::All},
        {u"none", Sign::NoneOf},
        {u"truepredicate", Sign::TruePredicate},
        {u"falsepredicate", Sign::FalsePredicate},
        {u"nil", Sign::Nil},
        {u"null", Sign::Nil},
        {u"true", Sign::True},
        {u"yes", Sign::True},
        {u"false", Sign::False},
        {u"no", Sign::False},
        {u"self", Sign::Self},
        {u"cast", Sign::Cast},
        {u"ternary", Sign::Ternary},
        {u"caseinsensitive", Sign::Reserved},
        {u"ci", Sign::Reserved},
        {u"subquery", Sign::Unsupported},
        {u"fetch", Sign::Unsupported},
        {u"function", Sign::Unsupported},
        {u"anykey", Sign::Unsupported},
    };
    return words;
}

struct SymbolSpelling
{
    std::u16string_view spelling;
    Sign sign;
};

// Longer symbols stand before their prefixes.
constexpr std::array<SymbolSpelling, 26> symbols = {{
    {u"==", Sign::Equal},
    {u"=<", Sign::LessOrEqual},
    {u"=>", Sign::GreaterOrEqual},
    {u"=", Sign::Equal},
    {u"!=", Sign::NotEqual},
    {u"<>", Sign::NotEqual},
    {u"<=", Sign::LessOrEqual},
    {u"<", Sign::Less},
    {u">=", Sign::GreaterOrEqual},
    {u">", Sign::Greater},
    {u"&&", Sign::And},
    {u"||", Sign::Or},
    {u"!", Sign::Not},
    {u"+", Sign::Plus},
    {u"-", Sign::Minus},
    {u"**", Sign::Power},
    {u"*", Sign::Times},
    {u"/", Sign::Divide},
    {u"(", Sign::OpenParenthesis},
    {u")", Sign::CloseParenthesis},
    {u"{", Sign::OpenBrace},
    {u"}", Sign::CloseBrace},
    {u"[", Sign::OpenBracket},
    {u"]", Sign::CloseBracket},
    {u",", Sign::Comma},
    {u".", Sign::Dot},
}};

} // namespace

Sign reservedSign(std::u16string_view word)
{
    constexpr std::size_t longest = 15;
    if (word.size() > longest)
        return Sign::None;
    const auto found = reservedWords().find(asciiLowered(word));
    return found == reservedWords().end() ? Sign::None : found->second;
}

Symbol leadingSymbol(std::u16string_view text)
{
    for (const SymbolSpelling& symbol : symbols) {
        if (text.substr(0, symbol.spelling.size()) == symbol.spelling)
            return {symbol.sign, symbol.spelling.size()};
    }
    return {};
}

std::optional<Operator> comparisonOperator(Sign sign)
{
    if (sign < Sign::Equal || sign > Sign::UtiEquals)
        return std::nullopt;
    return static_cast<Operator>(static_cast<int>(sign) - static_cast<int>(Sign::Equal));
}

} // namespace predicate
