// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/oversize.h"

#include "platform/logstore/trace/innerchunks.h"

#include <algorithm>

namespace logstore {

namespace {
constexpr std::size_t budget = std::size_t{8} << 20;
}

std::size_t OversizeStore::KeyHash::operator()(const Key& key) const
{
    constexpr std::uint64_t mix = 0x9e3779b97f4a7c15ULL;
    std::uint64_t hash = key.clock;
    for (const std::uint64_t part :
         {key.process.first, std::uint64_t{key.process.second}, std::uint64_t{key.reference}})
        hash = (hash ^ part) * mix;
    return hash;
}

void OversizeStore::add(std::uint32_t clock, Bytes body)
{
    ByteReader in(body);
    const Key key{clock, ProcessKey::read(in), loadAt<std::uint32_t>(body, 24)};
    const std::uint64_t time = dumpTime(body);
    std::vector<Kept>& chunks = m_chunks[key];
    if (std::any_of(chunks.begin(), chunks.end(),
                    [time](const Kept& kept) { return kept.time == time; }))
        return; // its chunk set has been unpacked a second time
    chunks.push_back({time, {body.begin(), body.end()}});
    m_order.push_back(key);
    m_bytes += body.size();
    while (m_bytes > budget) {
        const auto oldest = m_chunks.find(m_order.front());
        m_order.pop_front();
        m_bytes -= oldest->second.front().body.size();
        oldest->second.erase(oldest->second.begin());
        if (oldest->second.empty())
            m_chunks.erase(oldest);
    }
}

const std::vector<std::uint8_t>* OversizeStore::find(std::uint32_t clock,
                                                     const ProcessKey& key,
                                                     std::uint32_t reference,
                                                     std::uint64_t time) const
{
    const auto found = m_chunks.find({clock, key, reference});
    if (found == m_chunks.end())
        return nullptr;
    for (const Kept& kept : found->second)
        if (kept.time == time)
            return &kept.body;
    return &found->second.back().body;
}

} // namespace logstore
