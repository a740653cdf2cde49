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

/// A copy to match with: a compiled pattern itself is shared and stays as it is.
Regex copyOf(const Regex& regex);

/// Whether the whole text matches. A match that runs into the limits does not.
///
/// `overruns` counts the matches that ran out of time. After twenty of them, each of some
/// hundredths of a second, the pattern is taken to be one that tries a text in exponentially many
/// ways, and gets a fiftieth of the time from then on: else a fetch of a million entries would take
/// hours.
///
/// To ICU `$` also stands before a line break at the end of the text. It matters only to a pattern
/// that goes on behind it, as the whole text has to match.
bool wholeMatches(URegularExpression* regex, const std::u16string& text, int& overruns);

} // namespace predicate
