// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace predicate {

/// A plain text, with optional other text before and after it.
struct PlainForm
{
    std::string text;
    bool anyBefore = false;
    bool anyAfter = false;

    bool matchesAll() const { return text.empty() && (anyBefore || anyAfter); }
};

/// The plain texts of a regular expression.
struct RegexLiterals
{
    /// The texts that match are those of these forms. Empty when the expression is not plain text.
    std::vector<PlainForm> forms;
    /// Every text that matches contains one of these. Empty when no text is required.
    std::vector<std::string> required;
    bool caseless = false; ///< the expression begins with (?i)
};

/// Finds the plain texts of a valid expression, in which the dot matches line breaks. Expressions
/// with rare constructs have none.
RegexLiterals literalsOf(std::string_view expression);

} // namespace predicate
