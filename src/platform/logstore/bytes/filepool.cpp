// SPDX-License-Identifier: MIT
#include "platform/logstore/bytes/filepool.h"

#include <algorithm>

namespace logstore {

namespace {
constexpr std::size_t mostOpen = 64;
}

FilePool::FilePool(std::vector<std::filesystem::path> paths, StoreProblems& problems)
    : m_paths(std::move(paths))
    , m_slots(m_paths.size())
    , m_problems(problems)
{
}

const File* FilePool::file(std::uint32_t number)
{
    Slot& slot = m_slots[number];
    slot.lastUse = ++m_uses;
    if (!slot.file) {
        auto opened = File::open(m_paths[number]);
        if (!opened) {
            m_problems.add(std::move(opened.error()));
            return nullptr;
        }
        if (m_openCount == mostOpen)
            closeOldest();
        slot.file = std::move(*opened);
        ++m_openCount;
    }
    return &*slot.file;
}

void FilePool::closeOldest()
{
    const auto age = [](const Slot& slot) { return slot.file ? slot.lastUse : UINT64_MAX; };
    const auto oldest =
        std::min_element(m_slots.begin(), m_slots.end(),
                         [&age](const Slot& a, const Slot& b) { return age(a) < age(b); });
    oldest->file.reset();
    --m_openCount;
}

} // namespace logstore
