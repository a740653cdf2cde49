// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/predicateerror.h"
#include "platform/predicate/token.h"

#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace predicate {

/// The tokens of a format text, an End token last. A text with a piece that is no token has none.
tl::expected<std::vector<Token>, PredicateError> tokens(std::u16string_view text);

} // namespace predicate
