// SPDX-License-Identifier: MIT
#include "platform/predicate/text/textfolding.h"

#include "platform/base/ascii.h"
#include "platform/base/utf8.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

namespace predicate {

namespace {

char32_t foldedCase(char32_t character)
{
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

/// Appends the NFD of a text without ASCII, without characters of category Mn.
void appendWithoutMarks(std::string_view text, std::string& out)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* decomposer = unorm2_getNFDInstance(&status);
    const std::u16string composed = utf16(text);
    std::u16string decomposed(composed.size() * 4, u'\0'); // the longest canonical decomposition
    const std::int32_t length =
        unorm2_normalize(decomposer, composed.data(), static_cast<std::int32_t>(composed.size()),
                         decomposed.data(), static_cast<std::int32_t>(decomposed.size()), &status);
    if (U_FAILURE(status)) {
        out += text;
        return;
    }
    for (std::int32_t i = 0; i < length;) {
        UChar32 character = 0;
        U16_NEXT_OR_FFFD(decomposed, i, length, character);
        if (u_charType(character) != U_NON_SPACING_MARK)
            appendCodePoint(out, static_cast<char32_t>(character));
    }
}

bool isAsciiByte(char byte)
{
    return static_cast<unsigned char>(byte) < 0x80;
}

/// ASCII does not decompose, nor is it reordered with marks, so runs of other characters are
/// normalised one by one.
std::string withoutMarks(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const bool ascii = isAsciiByte(text[at]);
        std::size_t end = at + 1;
        while (end < text.size() && isAsciiByte(text[end]) == ascii)
            ++end;
        if (ascii)
            out += text.substr(at, end - at);
        else
            appendWithoutMarks(text.substr(at, end - at), out);
        at = end;
    }
    return out;
}

void foldCaseInto(std::string_view text, std::string& out)
{
    out.clear();
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (isAsciiByte(text[i])) {
            out += asciiLower(text[i]);
            ++i;
        } else {
            appendCodePoint(out, foldedCase(nextCharacter(text, i)));
        }
    }
}

} // namespace

void foldInto(std::string_view text, Folding folding, std::string& out)
{
    const bool marks = folding.markless && !isAscii(text);
    std::string unmarked;
    if (marks) {
        unmarked = withoutMarks(text);
        text = unmarked;
    }
    if (folding.caseless)
        foldCaseInto(text, out);
    else
        out.assign(text);
}

std::string folded(std::string_view text, Folding folding)
{
    std::string out;
    foldInto(text, folding, out);
    return out;
}

std::string_view FoldedTexts::folded(std::string_view text, Folding folding, std::string& room)
{
    if (folding.none())
        return text;
    for (std::size_t i = 0; i < m_used; ++i) {
        const Slot& slot = m_slots[i];
        if (slot.source.data() == text.data() && slot.source.size() == text.size()
            && slot.folding == folding)
            return slot.text;
    }
    if (m_used == m_slots.size()) {
        foldInto(text, folding, room);
        return room;
    }
    Slot& slot = m_slots[m_used++];
    slot.source = text;
    slot.folding = folding;
    foldInto(text, folding, slot.text);
    return slot.text;
}

} // namespace predicate
