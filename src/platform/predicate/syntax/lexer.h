// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/predicateerror.h"
#include "platform/predicate/syntax/token.h"

#include <optional>
#include <string_view>
#include <vector>

namespace predicate {

/// The tokens of a format text up to its end or its first error; the last is an End token.
struct Tokens
{
    std::vector<Token> found;
    std::optional<PredicateError> error;
};

Tokens tokens(std::u16string_view text);

} // namespace predicate
