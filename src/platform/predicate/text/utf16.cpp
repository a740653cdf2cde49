// SPDX-License-Identifier: MIT
#include "platform/predicate/text/utf16.h"

#include "platform/base/utf8.h"

#include <algorithm>
#include <unicode/utf16.h>

namespace predicate {

void utf16Into(std::string_view utf8, std::u16string& out)
{
    out.clear();
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x80) {
            out += static_cast<char16_t>(byte);
            ++i;
            continue;
        }
        const char32_t character = nextCharacter(utf8, i);
        if (character > 0xFFFF) {
            out += static_cast<char16_t>(U16_LEAD(character));
            out += static_cast<char16_t>(U16_TRAIL(character));
        } else {
            out += static_cast<char16_t>(character);
        }
    }
}

std::u16string utf16(std::string_view utf8)
{
    std::u16string out;
    utf16Into(utf8, out);
    return out;
}

std::string utf8(std::u16string_view utf16)
{
    std::string out;
    out.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size();) {
        UChar32 character = 0;
        U16_NEXT_OR_FFFD(utf16, i, utf16.size(), character);
        appendCodePoint(out, static_cast<char32_t>(character));
    }
    return out;
}

std::size_t utf16Length(std::string_view utf8)
{
    std::size_t length = 0;
    for (std::size_t i = 0; i < utf8.size();)
        length += nextCharacter(utf8, i) > 0xFFFF ? 2 : 1;
    return length;
}

int compareUtf16Order(std::string_view left, std::string_view right)
{
    const std::size_t shared = std::min(left.size(), right.size());
    const auto [l, r] = std::mismatch(
        left.begin(), left.begin() + static_cast<std::ptrdiff_t>(shared), right.begin());
    if (l == left.begin() + static_cast<std::ptrdiff_t>(shared))
        return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
    const auto a = static_cast<unsigned char>(*l);
    const auto b = static_cast<unsigned char>(*r);
    // The first bytes 0xEE and 0xEF begin U+E000 to U+FFFF, which in UTF-16 stand above all
    // surrogates.
    constexpr unsigned char privateUse = 0xEE;
    constexpr unsigned char supplementary = 0xF0;
    if (a >= privateUse && b >= privateUse && (a >= supplementary) != (b >= supplementary))
        return a >= supplementary ? -1 : 1;
    return a < b ? -1 : 1;
}

} // namespace predicate
