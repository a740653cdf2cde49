// SPDX-License-Identifier: MIT
#include "platform/base/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::uint64_t highBits = 0x8080808080808080;
constexpr char32_t replacement = 0xfffd;
constexpr std::string_view replacementText = "\xEF\xBF\xBD";

std::uint8_t byteAt(std::string_view text, std::size_t at)
{
    return at < text.size() ? static_cast<std::uint8_t>(text[at]) : 0;
}

std::size_t asciiPrefix(std::string_view text)
{
    std::size_t at = 0;
    for (; text.size() - at >= 8; at += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + at, sizeof word);
        if (word & highBits)
            break;
    }
    while (at < text.size() && byteAt(text, at) < 0x80)
        ++at;
    return at;
}

struct Sequence
{
    std::size_t length;
    bool valid;
};

/// The sequence that starts at `at`; an ill-formed one is as long as its longest valid beginning.
Sequence sequenceAt(std::string_view text, std::size_t at)
{
    const std::uint8_t first = byteAt(text, at);
    if (first < 0x80)
        return {1, true};
    std::size_t length = 0;
    std::uint8_t low = 0x80;
    std::uint8_t high = 0xbf;
    if (first >= 0xc2 && first <= 0xdf) {
        length = 2;
    } else if (first >= 0xe0 && first <= 0xef) {
        length = 3;
        low = first == 0xe0 ? 0xa0 : 0x80;
        high = first == 0xed ? 0x9f : 0xbf;
    } else if (first >= 0xf0 && first <= 0xf4) {
        length = 4;
        low = first == 0xf0 ? 0x90 : 0x80;
        high = first == 0xf4 ? 0x8f : 0xbf;
    } else {
        return {1, false};
    }
    for (std::size_t i = 1; i < length; ++i) {
        const std::uint8_t next = byteAt(text, at + i);
        if (at + i >= text.size() || next < low || next > high)
            return {i, false};
        low = 0x80;
        high = 0xbf;
    }
    return {length, true};
}

} // namespace

bool isAscii(std::string_view text)
{
    std::uint64_t seen = 0;
    std::size_t i = 0;
    std::array<std::uint64_t, 4> words{};
    for (; i + sizeof words <= text.size(); i += sizeof words) {
        std::memcpy(words.data(), text.data() + i, sizeof words);
        seen |= (words[0] | words[1]) | (words[2] | words[3]);
    }
    return (seen & highBits) == 0 && asciiPrefix(text.substr(i)) == text.size() - i;
}

bool isValidUtf8(std::string_view text)
{
    std::size_t at = asciiPrefix(text);
    while (at < text.size()) {
        const Sequence sequence = sequenceAt(text, at);
        if (!sequence.valid)
            return false;
        at += sequence.length;
        at += asciiPrefix(text.substr(at));
    }
    return true;
}

std::size_t incompleteTail(std::string_view text)
{
    constexpr std::size_t longestTail = 3;
    for (std::size_t tail = 1; tail <= std::min(longestTail, text.size()); ++tail) {
        const Sequence sequence = sequenceAt(text, text.size() - tail);
        const bool isLead = byteAt(text, text.size() - tail) >= 0xc2;
        if (isLead)
            return !sequence.valid && sequence.length == tail ? tail : 0;
    }
    return 0;
}

char32_t nextCharacter(std::string_view text, std::size_t& index)
{
    const std::size_t start = index;
    const Sequence sequence = sequenceAt(text, start);
    index += sequence.length;
    if (!sequence.valid)
        return replacement;
    const auto trailing = [&](std::size_t i) { return char32_t{byteAt(text, start + i)} & 0x3f; };
    const char32_t first = byteAt(text, start);
    switch (sequence.length) {
    case 1: return first;
    case 2: return (first & 0x1f) << 6 | trailing(1);
    case 3: return (first & 0x0f) << 12 | trailing(1) << 6 | trailing(2);
    default: return (first & 0x07) << 18 | trailing(1) << 12 | trailing(2) << 6 | trailing(3);
    }
}

void appendUtf8(std::string& out, std::string_view text)
{
    std::size_t start = 0;
    std::size_t at = asciiPrefix(text);
    while (at < text.size()) {
        const Sequence sequence = sequenceAt(text, at);
        if (!sequence.valid) {
            out.append(text, start, at - start);
            out.append(replacementText);
            start = at + sequence.length;
        }
        at += sequence.length;
        at += asciiPrefix(text.substr(at));
    }
    out.append(text, start);
}

void appendCodePoint(std::string& out, char32_t codePoint)
{
    const auto byte = [&out](char32_t value) { out += static_cast<char>(value); };
    if (codePoint < 0x80) {
        byte(codePoint);
    } else if (codePoint < 0x800) {
        byte(0xc0 | codePoint >> 6);
        byte(0x80 | (codePoint & 0x3f));
    } else if ((codePoint >= 0xd800 && codePoint <= 0xdfff) || codePoint > 0x10ffff) {
        out.append(replacementText);
    } else if (codePoint < 0x10000) {
        byte(0xe0 | codePoint >> 12);
        byte(0x80 | (codePoint >> 6 & 0x3f));
        byte(0x80 | (codePoint & 0x3f));
    } else {
        byte(0xf0 | codePoint >> 18);
        byte(0x80 | (codePoint >> 12 & 0x3f));
        byte(0x80 | (codePoint >> 6 & 0x3f));
        byte(0x80 | (codePoint & 0x3f));
    }
}
