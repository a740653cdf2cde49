// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/file.h"

#include <optional>

namespace logstore {

/// The trace files of a store by number. A limited number of them is open at a time.
class FilePool
{
public:
    /// `problems` takes the files that cannot be opened; it must outlive the pool.
    FilePool(std::vector<std::filesystem::path> paths, StoreProblems& problems);

    std::size_t size() const { return m_paths.size(); }
    bool anyOpened() const { return m_openCount > 0; }

    /// Null when the file cannot be opened. Valid until the next call.
    const File* file(std::uint32_t number);

    const std::filesystem::path& path(std::uint32_t number) const { return m_paths[number]; }

private:
    void closeOldest();

    struct Slot
    {
        std::optional<File> file;
        std::uint64_t lastUse = 0;
    };

    std::vector<std::filesystem::path> m_paths;
    std::vector<Slot> m_slots;
    StoreProblems& m_problems;
    std::size_t m_openCount = 0;
    std::uint64_t m_uses = 0;
};

} // namespace logstore
