// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/textfolding.h"

#include <memory>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <unicode/uregex.h>

namespace predicate {

struct RegexCloser
{
    void operator()(URegularExpression* regex) const { uregex_close(regex); }
};
using Regex = std::unique_ptr<URegularExpression, RegexCloser>;

/// Compiles a pattern of MATCHES with limits on the time and the memory of a match, or says in
/// ICU's words why it is none.
tl::expected<Regex, std::string> compiledRegex(std::string_view pattern, Folding folding);

/// A copy to match with: a compiled pattern itself is shared and stays as it is.
Regex copyOf(const Regex& regex);

/// Whether the whole text matches. A match that runs into the limits does not.
bool wholeMatches(URegularExpression* regex, const std::u16string& text);

} // namespace predicate
