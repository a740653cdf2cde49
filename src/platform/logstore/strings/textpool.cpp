// SPDX-License-Identifier: MIT
#include "platform/logstore/strings/textpool.h"

#include "platform/base/utf8.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace logstore {

namespace {
constexpr std::size_t blockSize = std::size_t{64} * 1024;
constexpr std::size_t budget = std::size_t{32} << 20;
constexpr std::size_t placeSize = 64; ///< of a text in the table
} // namespace

std::string_view TextPool::intern(std::string_view text)
{
    if (text.empty())
        return {};
    if (const auto found = m_texts.find(text); found != m_texts.end())
        return *found;
    if (text.size() > budget - m_bytes)
        return {};
    m_bytes = std::min(budget, m_bytes + text.size() + placeSize);
    return *m_texts.insert(store(text)).first;
}

std::string_view TextPool::internUnchecked(std::string_view bytes)
{
    if (isValidUtf8(bytes))
        return intern(bytes);
    std::string text;
    appendUtf8(text, bytes);
    return intern(text);
}

std::string_view TextPool::store(std::string_view text)
{
    if (m_blocks.empty() || m_blockSize - m_blockUsed < text.size()) {
        m_blockSize = std::max(blockSize, text.size());
        m_blockUsed = 0;
        m_blocks.push_back(std::make_unique<char[]>(m_blockSize));
    }
    char* place = m_blocks.back().get() + m_blockUsed;
    std::memcpy(place, text.data(), text.size());
    m_blockUsed += text.size();
    return {place, text.size()};
}

} // namespace logstore
