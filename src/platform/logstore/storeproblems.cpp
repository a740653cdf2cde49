// SPDX-License-Identifier: MIT
#include "platform/logstore/storeproblems.h"

#include <algorithm>
#include <numeric>

namespace logstore {

void StoreProblems::add(StoreProblem problem)
{
    const auto relative = std::filesystem::path(problem.name).lexically_relative(m_root);
    if (!relative.empty() && *relative.begin() != "..")
        problem.name = relative.string();
    if (const auto known = m_known.find(problem.name); known != m_known.end()) {
        const auto& kinds = known->second;
        if (std::find(kinds.begin(), kinds.end(), problem.kind) != kinds.end())
            return;
    }
    ++m_counts[problem.kind];
    if (m_list.size() == mostListed)
        return;
    m_known[problem.name].push_back(problem.kind);
    m_list.push_back(std::move(problem));
}

std::size_t StoreProblems::count(ProblemKind kind) const
{
    const auto found = m_counts.find(kind);
    return found == m_counts.end() ? 0 : found->second;
}

std::size_t StoreProblems::count() const
{
    return std::accumulate(m_counts.begin(), m_counts.end(), std::size_t{0},
                           [](std::size_t sum, const auto& ofKind) { return sum + ofKind.second; });
}

} // namespace logstore
