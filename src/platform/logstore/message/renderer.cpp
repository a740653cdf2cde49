// SPDX-License-Identifier: MIT
#include "platform/logstore/message/renderer.h"

#include "platform/logstore/message/conversion.h"
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

bool holdsText(const Item& item)
{
    return item.isText() || item.kind() == ItemKind::Data || item.kind() == ItemKind::WideText;
}

/// Whether there is no value, rather than one of which nothing was stored.
bool isMissing(const Item& item)
{
    return item.bytes.empty() && item.state != ItemState::Cut;
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

void appendOutOfRange(std::string& out, const Conversion& conversion, const Item& item)
{
    out.append("<decode: bad range for [").append(conversion.text).append("] got [offs:");
    appendDecimal(out, item.offset);
    out += " len:";
    appendDecimal(out, item.size);
    out += " within:";
    appendDecimal(out, item.within);
    out += "]>";
}

/// The texts that stand for a whole conversion because its value may not or cannot be shown.
bool appendInsteadOfValue(std::string& out, const Conversion& conversion, const Item& item)
{
    constexpr std::uint8_t sensitive = 4;
    const bool isSensitive = (item.privacy() & sensitive) != 0;
    const bool isMasked = item.kind() == ItemKind::Masked;
    if (isSensitive || (!isMasked && item.privacy() == 1 && item.state == ItemState::Redacted))
        out += privateText;
    else if (item.state == ItemState::OutOfRange)
        appendOutOfRange(out, conversion, item);
    else if (isMasked)
        appendMasked(out, item);
    else if (conversion.decorations.masked && holdsText(item) && isMissing(item))
        out += nullMask;
    else
        return false;
    return true;
}

void appendValue(std::string& out, const Field& field, const Item& item)
{
    const Conversion& conversion = field.conversion;
    DecorationResult result = DecorationResult::NotDecorated;
    if (const Decoration* decoration = conversion.decorations.decoration)
        result = appendDecorated(out, *decoration, conversion.letter, item);
    switch (result) {
    case DecorationResult::Written: break;
    case DecorationResult::NotDecorated: appendByLetter(out, field, item); break;
    case DecorationResult::Mismatch: appendMismatch(out, conversion.text, item); break;
    case DecorationResult::Unsupported: out += unsupportedValue; break;
    }
}

/// Appends an argument between the marks that tell tools what it means for a signpost.
void appendSignpostValue(std::string& out, const Field& field, const Item& item)
{
    constexpr std::string_view floatLetters = "aAeEfFgG";
    const Decorations& decorations = field.conversion.decorations;
    const std::string_view key = decorations.signpostKey;
    const bool isTime = key == "begin_time" || key == "end_time";
    const bool isFloat = item.isNumber() && !decorations.decoration
                         && floatLetters.find(field.conversion.letter) != std::string_view::npos;
    out.append("__##__").append(decorations.signpostLabel).append("#____#").append(key);
    out += "#_##_#";
    if (isTime && item.isNumber())
        appendDecimal(out, unsignedValue(item.bytes));
    else if (isFloat && item.bytes.size() == 8)
        appendFormatted(out, "%.16g", loadAt<double>(item.bytes));
    else if (isFloat && item.bytes.size() == 4)
        appendFormatted(out, "%.16g", static_cast<double>(loadAt<float>(item.bytes)));
    else if (!holdsText(item) || !isMissing(item))
        appendValue(out, field, item);
    out += "##__##";
}

void appendConversion(std::string& out, const Conversion& conversion, ItemCursor& cursor)
{
    Field field{conversion, conversion.width, conversion.leftJustified, conversion.precision};
    if (field.width == Conversion::fromItem) {
        field.width = Conversion::none;
        if (cursor.takeStar(field.width) && field.width < 0) {
            field.leftJustified = true;
            field.width = -field.width;
        }
    }
    if (field.precision == Conversion::fromItem) {
        field.precision = Conversion::none;
        cursor.takeStar(field.precision);
        field.precision = std::max(field.precision, Conversion::none);
    }
    cursor.passCounts(field.precision);
    const Item* item = cursor.current();
    if (!item) {
        out += missingData;
        return;
    }
    cursor.advance();
    if (appendInsteadOfValue(out, conversion, *item))
        return;
    if (conversion.decorations.signpostLabel.empty())
        appendValue(out, field, *item);
    else
        appendSignpostValue(out, field, *item);
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
