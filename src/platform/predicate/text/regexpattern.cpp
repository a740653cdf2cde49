// SPDX-License-Identifier: MIT
#include "platform/predicate/text/regexpattern.h"

#include "platform/predicate/text/utf16.h"

namespace predicate {

namespace {

// ICU counts in steps of ten thousand; on present machines this is some hundredths of a second.
constexpr std::int32_t timeLimit = 100;
constexpr std::int32_t shortTimeLimit = 2;
constexpr int mostOverruns = 20;
constexpr std::int32_t stackLimit = 1 << 20;

std::string reason(UErrorCode status)
{
    switch (status) {
    case U_REGEX_MISMATCHED_PAREN: return "a parenthesis is not closed or not opened";
    case U_REGEX_MISSING_CLOSE_BRACKET: return "a closing bracket is missing";
    case U_REGEX_BAD_ESCAPE_SEQUENCE: return "a backslash is followed by what has no meaning";
    case U_REGEX_BAD_INTERVAL:
    case U_REGEX_MAX_LT_MIN: return "the numbers in braces are not a range";
    case U_REGEX_NUMBER_TOO_BIG: return "a number is too big";
    case U_REGEX_INVALID_BACK_REF: return "a group is referred to that is not there";
    case U_REGEX_INVALID_FLAG: return "a flag is not known";
    case U_REGEX_LOOK_BEHIND_LIMIT: return "the length of a look-behind has no limit";
    case U_REGEX_INVALID_RANGE: return "a range of characters runs backwards";
    case U_REGEX_PATTERN_TOO_BIG:
    case U_REGEX_STACK_OVERFLOW: return "it is too big";
    case U_REGEX_RULE_SYNTAX: return "something to repeat or a character is missing or misplaced";
    default: return "";
    }
}

/// The reason in words, ICU's name for it, and the place if ICU gives one.
std::string explained(UErrorCode status, const UParseError& place)
{
    const std::string words = reason(status);
    std::string out =
        words.empty() ? u_errorName(status) : words + " (" + u_errorName(status) + ")";
    if (place.offset > 0)
        out += ", at character " + std::to_string(place.offset);
    return out;
}

} // namespace

tl::expected<Regex, std::string> compiledRegex(std::string_view pattern, Folding folding)
{
    const std::u16string units = utf16(folded(pattern, Folding(false, folding.markless)));
    UErrorCode status = U_ZERO_ERROR;
    UParseError place{};
    const std::uint32_t flags =
        UREGEX_DOTALL | UREGEX_MULTILINE | (folding.caseless ? UREGEX_CASE_INSENSITIVE : 0);
    // ICU refuses an empty pattern; this one matches the empty text.
    const std::u16string_view effective =
        units.empty() ? std::u16string_view(u"(?:)") : std::u16string_view(units);
    Regex regex(uregex_open(effective.data(), static_cast<std::int32_t>(effective.size()), flags,
                            &place, &status));
    uregex_setTimeLimit(regex.get(), timeLimit, &status);
    uregex_setStackLimit(regex.get(), stackLimit, &status);
    if (U_FAILURE(status))
        return tl::unexpected(explained(status, place));
    return regex;
}

Regex copyOf(const Regex& regex)
{
    UErrorCode status = U_ZERO_ERROR;
    Regex copy(uregex_clone(regex.get(), &status));
    uregex_setTimeLimit(copy.get(), timeLimit, &status);
    uregex_setStackLimit(copy.get(), stackLimit, &status);
    return copy;
}

bool wholeMatches(URegularExpression* regex, const std::u16string& text, int& overruns)
{
    UErrorCode status = U_ZERO_ERROR;
    if (overruns == mostOverruns)
        uregex_setTimeLimit(regex, shortTimeLimit, &status);
    uregex_setText(regex, text.data(), static_cast<std::int32_t>(text.size()), &status);
    const bool matched = uregex_matches(regex, 0, &status) != 0;
    if (status == U_REGEX_TIME_OUT && overruns < mostOverruns)
        ++overruns;
    return U_SUCCESS(status) && matched;
}

} // namespace predicate
