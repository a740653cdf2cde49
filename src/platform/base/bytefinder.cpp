// SPDX-License-Identifier: MIT
#include "platform/base/bytefinder.h"

#include "platform/base/ascii.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr char lowerCaseBit = 0x20;

/// How common a byte is in log messages; unknown ones are rare.
std::size_t commonness(char byte)
{
    constexpr std::string_view rareToCommon =
        "QZXJqzYKVWUHGBOjNM9786kILxPDF%54{}<>R3ECTAS,bw=v2y[]gh\"1mu_f:0-pd/.lcnostriae ";
    const std::size_t place = rareToCommon.find(byte);
    return place == std::string_view::npos ? 0 : place + 1;
}

} // namespace

ByteFinder::ByteFinder(std::string_view needle, Case letters)
    : m_needle(needle)
    , m_caseBits(needle.size(), '\0')
{
    for (std::size_t i = 0; letters == Case::AsciiIgnored && i < m_needle.size(); ++i) {
        if (isAsciiLetter(static_cast<unsigned char>(m_needle[i]))) {
            m_needle[i] = asciiLower(m_needle[i]);
            m_caseBits[i] = lowerCaseBit;
        }
    }
    std::size_t rarest = 0;
    for (std::size_t i = 1; i < m_needle.size(); ++i)
        rarest = commonness(m_needle[i]) < commonness(m_needle[rarest]) ? i : rarest;
    std::size_t second = rarest == 0 && m_needle.size() > 1 ? 1 : 0;
    for (std::size_t i = 0; i < m_needle.size(); ++i)
        second = i != rarest && commonness(m_needle[i]) < commonness(m_needle[second]) ? i : second;
    if (!m_needle.empty()) {
        m_first = probe(rarest);
        m_second = probe(second);
    }
}

ByteFinder::Probe ByteFinder::probe(std::size_t offset) const
{
    return {offset, m_needle[offset], m_caseBits[offset]};
}

bool ByteFinder::standsAt(const char* text) const
{
    for (std::size_t i = 0; i < m_needle.size(); ++i) {
        if (static_cast<char>(text[i] | m_caseBits[i]) != m_needle[i])
            return false;
    }
    return true;
}

/// Tries the places in [start, end) one by one.
std::size_t
ByteFinder::findOneByOne(std::string_view text, std::size_t start, std::size_t end) const
{
    for (std::size_t i = start; i < end; ++i) {
        const bool likely =
            static_cast<char>(text[i + m_first.offset] | m_first.caseBit) == m_first.byte;
        if (likely && standsAt(text.data() + i))
            return i;
    }
    return npos;
}

std::size_t ByteFinder::find(std::string_view text, std::size_t from) const
{
    if (text.size() < m_needle.size() || from > text.size() - m_needle.size())
        return npos;
    if (m_needle.empty())
        return from;
    const std::size_t places = text.size() - m_needle.size() + 1;
#if defined(__SSE2__)
    constexpr std::size_t width = sizeof(__m128i);
    const auto load = [&](std::size_t at) {
        __m128i block;
        std::memcpy(&block, text.data() + at, width);
        return block;
    };
    const __m128i firstBit = _mm_set1_epi8(m_first.caseBit);
    const __m128i secondBit = _mm_set1_epi8(m_second.caseBit);
    const __m128i firstByte = _mm_set1_epi8(m_first.byte);
    const __m128i secondByte = _mm_set1_epi8(m_second.byte);
    std::size_t i = from;
    for (; i + width <= places; i += width) {
        const __m128i first =
            _mm_cmpeq_epi8(_mm_or_si128(load(i + m_first.offset), firstBit), firstByte);
        const __m128i second =
            _mm_cmpeq_epi8(_mm_or_si128(load(i + m_second.offset), secondBit), secondByte);
        auto hits = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(first, second)));
        for (; hits != 0; hits &= hits - 1) {
            const std::size_t place = i + static_cast<std::size_t>(__builtin_ctz(hits));
            if (standsAt(text.data() + place))
                return place;
        }
    }
    return findOneByOne(text, i, places);
#else
    return findOneByOne(text, from, places);
#endif
}
