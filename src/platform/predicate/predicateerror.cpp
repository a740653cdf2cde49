// SPDX-License-Identifier: MIT
#include "platform/predicate/predicateerror.h"

#include "platform/base/ascii.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <vector>

namespace predicate {

namespace {

constexpr std::u16string_view breaks = u"\n\r";
constexpr std::size_t widest = 72; // columns of a line in an alert

/// A character, and its width in columns of a fixed-width font.
struct Cell
{
    std::u16string text;
    std::size_t width = 1;
};

std::size_t widthOf(UChar32 character)
{
    const auto category = u_charType(character);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK)
        return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE ? 2 : 1;
}

struct Line
{
    std::vector<Cell> cells;
    std::size_t caret = 0; ///< index of the cell at the position
};

/// The start of the line with the position.
std::size_t lineStart(std::u16string_view text, std::size_t position)
{
    const std::size_t before =
        position == 0 ? std::u16string_view::npos : text.find_last_of(breaks, position - 1);
    return before == std::u16string_view::npos ? 0 : before + 1;
}

/// The position; on a blank line, the end of the last line before it that is not blank.
std::size_t shownPosition(std::u16string_view text, std::size_t position)
{
    const std::size_t start = lineStart(text, position);
    const std::size_t end = std::min(text.find_first_of(breaks, position), text.size());
    const std::u16string_view line = text.substr(start, end - start);
    const bool blank = line.find_first_not_of(asciiBlanks) == std::u16string_view::npos;
    const std::size_t last = text.substr(0, start).find_last_not_of(asciiBlanks);
    return blank && last != std::u16string_view::npos ? last + 1 : position;
}

Line lineAt(std::u16string_view text, std::size_t position)
{
    const std::size_t start = lineStart(text, position);
    const std::size_t end = std::min(text.find_first_of(breaks, position), text.size());
    Line line;
    for (std::size_t i = start; i < end;) {
        const std::size_t first = i;
        UChar32 character = 0;
        U16_NEXT_OR_FFFD(text, i, end, character);
        line.caret = first <= position ? line.cells.size() : line.caret;
        // The width of a tab depends on its column, so a blank is shown instead.
        const bool control = u_iscntrl(character) != 0;
        line.cells.push_back({control ? u" " : std::u16string(text.substr(first, i - first)),
                              control ? 1 : widthOf(character)});
    }
    if (position >= end)
        line.caret = line.cells.size();
    return line;
}

std::size_t widthOf(const Line& line, std::size_t from, std::size_t to)
{
    std::size_t width = 0;
    for (std::size_t i = from; i < to; ++i)
        width += line.cells[i].width;
    return width;
}

/// Cuts a long line at both sides of its caret.
Line shortLine(const Line& line)
{
    const Cell gap{u"…", 1};
    std::size_t first = line.caret;
    for (std::size_t width = 0; first > 0 && width + line.cells[first - 1].width <= widest * 2 / 3;
         --first)
        width += line.cells[first - 1].width;
    std::size_t last = line.caret;
    for (std::size_t width = widthOf(line, first, last);
         last < line.cells.size() && width <= widest; ++last)
        width += line.cells[last].width;
    Line cut;
    cut.caret = line.caret - first;
    if (first > 0) {
        cut.cells.push_back(gap);
        ++cut.caret;
    }
    for (std::size_t i = first; i < last; ++i)
        cut.cells.push_back(line.cells[i]);
    if (last < line.cells.size())
        cut.cells.push_back(gap);
    return cut;
}

} // namespace

std::string alertText(const PredicateError& error, std::string_view formatText)
{
    const std::u16string text = utf16(formatText);
    const Line line =
        shortLine(lineAt(text, shownPosition(text, std::min(error.position, text.size()))));
    std::u16string shown;
    for (const Cell& cell : line.cells)
        shown += cell.text;
    if (line.cells.empty())
        return error.sentence;
    return error.sentence + "\n\n" + utf8(shown) + "\n"
           + std::string(widthOf(line, 0, line.caret), ' ') + "^";
}

} // namespace predicate
