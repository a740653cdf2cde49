// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/predicateerror.h"
#include "platform/predicate/syntax/token.h"

#include <optional>
#include <string_view>
#include <vector>

namespace predicate {

/// The tokens of a format text, an End token last; those before the first piece that is no token,
/// when there is one.
struct Tokens
{
    std::vector<Token> found;
    std::optional<PredicateError> error;
};

Tokens tokens(std::u16string_view text);

} // namespace predicate
