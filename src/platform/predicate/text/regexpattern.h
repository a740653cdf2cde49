// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/text/textfolding.h"

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
/// ICU's words why it is not valid. The dot matches line breaks, and ^ and $ match at every line.
tl::expected<Regex, std::string> compiledRegex(std::string_view pattern, Folding folding);

/// A copy to match with: the compiled pattern itself is shared, and must not change.
Regex copyOf(const Regex& regex);

/// Whether the whole text matches. False when the match runs into the limits.
///
/// `overruns` counts the matches that ran out of time, each of some hundredths of a second. After
/// twenty of them the pattern gets a fiftieth of the time: a pattern that takes exponential time
/// would make a fetch of a million entries last hours.
bool wholeMatches(URegularExpression* regex, const std::u16string& text, int& overruns);

} // namespace predicate
