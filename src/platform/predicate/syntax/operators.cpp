// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/operators.h"

#include <array>

namespace predicate {

std::string_view spelling(Operator comparison)
{
    static constexpr std::array<std::string_view, 15> spellings = {
        "==",        "!=",         "<",        "<=",   ">",       ">=",      "IN",
        "CONTAINS",  "BEGINSWITH", "ENDSWITH", "LIKE", "MATCHES", "BETWEEN", "UTI-CONFORMS-TO",
        "UTI-EQUALS"};
    return spellings[static_cast<std::size_t>(comparison)];
}

std::string_view spelling(Quantifier quantifier)
{
    static constexpr std::array<std::string_view, 4> spellings = {"", "ANY", "ALL", "NONE"};
    return spellings[static_cast<std::size_t>(quantifier)];
}

std::string spelling(Options options)
{
    std::string letters;
    if (options.caseless)
        letters += 'c';
    if (options.markless)
        letters += 'd';
    if (options.normalized)
        letters += 'n';
    if (options.localized)
        letters += 'l';
    return letters.empty() ? letters : '[' + letters + ']';
}

} // namespace predicate
