// SPDX-License-Identifier: MIT
#include "platform/predicate/text/sentences.h"

#include "platform/base/ascii.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <numeric>

namespace predicate {

namespace {

constexpr std::size_t longestPiece = 40; // in UTF-16 units

/// The number of letters to insert, remove, replace or swap with a neighbour.
std::size_t editDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> beforePrevious;
    std::vector<std::size_t> previous(b.size() + 1);
    std::iota(previous.begin(), previous.end(), std::size_t{0});
    std::vector<std::size_t> current(b.size() + 1);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        current[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            current[j] = std::min({previous[j] + 1, current[j - 1] + 1, replaced});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped)
                current[j] = std::min(current[j], beforePrevious[j - 2] + 1);
        }
        beforePrevious = previous;
        std::swap(previous, current);
    }
    return previous[b.size()];
}

} // namespace

std::string shortened(std::u16string_view piece)
{
    std::u16string oneLine;
    for (const char16_t unit : piece) {
        const bool blank = asciiBlanks.find(unit) != std::u16string_view::npos;
        if (oneLine.size() == longestPiece) {
            const bool insidePair = unit >= 0xDC00 && unit <= 0xDFFF;
            if (insidePair)
                oneLine.pop_back();
            return utf8(oneLine) + "…";
        }
        if (!blank)
            oneLine += unit;
        else if (!oneLine.empty() && oneLine.back() != u' ')
            oneLine += u' ';
    }
    return utf8(oneLine);
}

std::string quoted(std::u16string_view piece)
{
    return "“" + shortened(piece) + "”";
}

std::string quoted(std::string_view piece)
{
    return quoted(std::u16string_view(utf16(piece)));
}

std::string alternatives(const std::vector<std::string_view>& names)
{
    std::string out;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0)
            out += i + 1 == names.size() ? " or " : ", ";
        out += names[i];
    }
    return out;
}

std::string_view nearest(std::string_view word, const std::vector<std::string_view>& candidates)
{
    constexpr std::size_t longestWord = 64;
    if (word.size() > longestWord)
        return {};
    const std::string wanted = asciiLowered(word);
    // Two changed letters make a short word another word.
    std::size_t best = word.size() <= 4 ? 2 : 3;
    std::string_view found;
    for (const std::string_view candidate : candidates) {
        const std::size_t distance = editDistance(wanted, asciiLowered(candidate));
        if (distance < best) {
            best = distance;
            found = candidate;
        }
    }
    return found;
}

} // namespace predicate
