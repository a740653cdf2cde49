// SPDX-License-Identifier: MIT
#include "platform/logstore/bytes/utf8.h"

#include <algorithm>

namespace logstore {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

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
        if (word & 0x8080808080808080ULL)
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

std::string_view cString(Bytes bytes)
{
    if (bytes.empty())
        return {};
    const void* zero = std::memchr(bytes.data(), 0, bytes.size());
    const auto* begin = reinterpret_cast<const char*>(bytes.data());
    return {begin,
            zero ? static_cast<std::size_t>(static_cast<const char*>(zero) - begin) : bytes.size()};
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

void appendUtf8(std::string& out, std::string_view text)
{
    std::size_t start = 0;
    std::size_t at = asciiPrefix(text);
    while (at < text.size()) {
        const Sequence sequence = sequenceAt(text, at);
        if (!sequence.valid) {
            out.append(text, start, at - start);
            out.append(replacement);
            start = at + sequence.length;
        }
        at += sequence.length;
        at += asciiPrefix(text.substr(at));
    }
    out.append(text, start);
}

void appendCodePoint(std::string& out, std::uint32_t codePoint)
{
    const auto byte = [&out](std::uint32_t value) { out += static_cast<char>(value); };
    if (codePoint < 0x80) {
        byte(codePoint);
    } else if (codePoint < 0x800) {
        byte(0xc0 | codePoint >> 6);
        byte(0x80 | (codePoint & 0x3f));
    } else if ((codePoint >= 0xd800 && codePoint <= 0xdfff) || codePoint > 0x10ffff) {
        out.append(replacement);
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

void appendUtf32(std::string& out, Bytes bytes)
{
    for (std::size_t at = 0; bytes.size() - at >= 4; at += 4) {
        const auto codePoint = loadAt<std::uint32_t>(bytes, at);
        if (codePoint == 0)
            return;
        appendCodePoint(out, codePoint);
    }
}

DecodedCodePoint decodeFront(std::string_view text)
{
    const std::uint8_t first = byteAt(text, 0);
    const auto tail = [text](std::size_t i) { return byteAt(text, i) & 0x3fU; };
    if (first < 0x80)
        return {first, 1};
    if (first < 0xe0)
        return {(first & 0x1fU) << 6 | tail(1), 2};
    if (first < 0xf0)
        return {(first & 0x0fU) << 12 | tail(1) << 6 | tail(2), 3};
    return {(first & 0x07U) << 18 | tail(1) << 12 | tail(2) << 6 | tail(3), 4};
}

} // namespace logstore
