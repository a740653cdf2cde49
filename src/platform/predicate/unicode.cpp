// SPDX-License-Identifier: MIT
#include "platform/predicate/unicode.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <unicode/utf16.h>

namespace predicate {

namespace {

constexpr char32_t replacement = U'\uFFFD';

/// What may follow a first byte. The bounds of the second byte keep out surrogates, what is too
/// long and what lies beyond U+10FFFF.
struct SequenceForm
{
    int trailing = 0;
    unsigned leadBits = 0;
    unsigned firstLowest = 0x80;
    unsigned firstHighest = 0xBF;
};

SequenceForm sequenceForm(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return {1, 0x1F};
    if (lead >= 0xE0 && lead <= 0xEF)
        return {2, 0x0F, lead == 0xE0 ? 0xA0U : 0x80U, lead == 0xED ? 0x9FU : 0xBFU};
    if (lead >= 0xF0 && lead <= 0xF4)
        return {3, 0x07, lead == 0xF0 ? 0x90U : 0x80U, lead == 0xF4 ? 0x8FU : 0xBFU};
    return {};
}

} // namespace

char32_t nextCharacter(std::string_view utf8, std::size_t& index)
{
    const auto lead = static_cast<unsigned char>(utf8[index++]);
    if (lead < 0x80)
        return lead;
    const SequenceForm form = sequenceForm(lead);
    char32_t character = lead & form.leadBits;
    for (int i = 0; i < form.trailing; ++i) {
        const unsigned byte = index < utf8.size() ? static_cast<unsigned char>(utf8[index]) : 0U;
        const unsigned lowest = i == 0 ? form.firstLowest : 0x80;
        const unsigned highest = i == 0 ? form.firstHighest : 0xBF;
        if (byte < lowest || byte > highest)
            return replacement;
        character = character << 6U | (byte & 0x3FU);
        ++index;
    }
    return form.trailing == 0 ? replacement : character;
}

void appendUtf8(std::string& out, char32_t character)
{
    const auto trailing = [character](unsigned shift) {
        return static_cast<char>(0x80U | (character >> shift & 0x3FU));
    };
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0U | character >> 6U);
        out += trailing(0);
    } else if (character < 0x10000) {
        out += static_cast<char>(0xE0U | character >> 12U);
        out += trailing(6);
        out += trailing(0);
    } else {
        out += static_cast<char>(0xF0U | character >> 18U);
        out += trailing(12);
        out += trailing(6);
        out += trailing(0);
    }
}

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
        appendUtf8(out, static_cast<char32_t>(character));
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

bool isAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::uint64_t seen = 0;
    std::size_t i = 0;
    std::array<std::uint64_t, 4> words{};
    for (; i + sizeof words <= text.size(); i += sizeof words) {
        std::memcpy(words.data(), text.data() + i, sizeof words);
        seen |= (words[0] | words[1]) | (words[2] | words[3]);
    }
    for (; i + sizeof seen <= text.size(); i += sizeof seen) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        seen |= word;
    }
    for (; i < text.size(); ++i)
        seen |= static_cast<unsigned char>(text[i]);
    return (seen & highBits) == 0;
}

} // namespace predicate
