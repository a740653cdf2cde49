// SPDX-License-Identifier: MIT
#include "platform/logstore/message/renderer.h"

#include "platform/logstore/message/textoutput.h"

#include <algorithm>

namespace logstore {

namespace {

/// A crafted format could ask for gigabytes of padding; no real message comes near this.
constexpr std::size_t largestMessage = std::size_t{16} << 20;

constexpr std::string_view missingData = "<decode: missing data>";
constexpr std::string_view privateText = "<private>";
constexpr std::string_view nullMask = "<mask.hash: (null)>";

/// Walks the items along the conversions of a program.
class ItemCursor
{
public:
    explicit ItemCursor(const Items& items) : m_items(items) {}

    const Item* current() const { return m_at < m_items.size() ? &m_items[m_at] : nullptr; }
    void advance() { ++m_at; }

    /// The value for a star, when a number or a count is at hand.
    bool takeStar(std::int32_t& value)
    {
        const Item* item = current();
        if (!item || (item->kind() != ItemKind::Number && item->kind() != ItemKind::Count))
            return false;
        value = clampedValue(*item);
        advance();
        return true;
    }

    /// Passes the counts and mask names in front of a value; the last count sets the precision.
    void passCounts(std::int32_t& precision)
    {
        for (const Item* item = current(); item; item = current()) {
            if (item->kind() == ItemKind::Count)
                precision = std::max(clampedValue(*item), Conversion::none);
            else if (item->kind() != ItemKind::MaskName)
                return;
            advance();
        }
    }

private:
    static std::int32_t clampedValue(const Item& item)
    {
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(
            signedValue(item.bytes), -Conversion::largest, Conversion::largest));
    }

    const Items& m_items;
    std::size_t m_at = 0;
};

bool holdsText(ItemKind kind)
{
    return kind == ItemKind::Text || kind == ItemKind::Data || kind == ItemKind::Object
           || kind == ItemKind::WideText || kind == ItemKind::TextToo;
}

void appendMasked(std::string& out, const Item& item)
{
    if (item.bytes.empty()) {
        out += item.privacy() == 1 ? privateText : nullMask;
        return;
    }
    out += "<mask.hash: '";
    appendBase64(out, item.bytes);
    out += "'>";
}

/// The texts that stand for a whole conversion because its value may not or cannot be shown.
bool appendInsteadOfValue(std::string& out, const Conversion& conversion, const Item& item)
{
    constexpr std::uint8_t sensitive = 4;
    const bool isSensitive = (item.privacy() & sensitive) != 0;
    const bool isMasked = item.kind() == ItemKind::Masked;
    if (isSensitive || (!isMasked && item.privacy() == 1 && item.redacted))
        out += privateText;
    else if (isMasked)
        appendMasked(out, item);
    else if (conversion.masked && holdsText(item.kind()) && item.bytes.empty())
        out += nullMask;
    else
        return false;
    return true;
}

void appendConversion(std::string& out, const Conversion& conversion, ItemCursor& cursor)
{
    std::int32_t width = conversion.width;
    std::int32_t precision = conversion.precision;
    bool leftJustified = conversion.leftJustified;
    if (width == Conversion::fromItem) {
        width = Conversion::none;
        if (cursor.takeStar(width) && width < 0) {
            leftJustified = true;
            width = -width;
        }
    }
    if (precision == Conversion::fromItem) {
        precision = Conversion::none;
        cursor.takeStar(precision);
        precision = std::max(precision, Conversion::none);
    }
    cursor.passCounts(precision);
    const Item* item = cursor.current();
    if (!item) {
        out += missingData;
        return;
    }
    cursor.advance();
    if (appendInsteadOfValue(out, conversion, *item))
        return;
    for (const Decoration& decoration : conversion.decorations)
        if (appendDecorated(out, decoration, conversion, *item, precision))
            return;
    appendByLetter(out, conversion, *item, width, leftJustified, precision);
}

} // namespace

void appendMessage(std::string& out, const FormatProgram& program, const Items& items)
{
    ItemCursor cursor(items);
    for (const FormatProgram::Step& step : program.steps()) {
        if (out.size() > largestMessage)
            return;
        out += step.literal;
        if (step.conversion != Conversion::none)
            appendConversion(out, program.conversion(step.conversion), cursor);
    }
}

} // namespace logstore
