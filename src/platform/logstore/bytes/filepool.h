// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/file.h"

#include <optional>

namespace logstore {

/// The trace files of a store by number. Only so many are open at once, however many there are.
class FilePool
{
public:
    explicit FilePool(std::vector<std::filesystem::path> paths);

    std::size_t size() const { return m_paths.size(); }

    /// Null when the file cannot be opened. Valid until the next call.
    const File* file(std::uint32_t number);

    /// Why the first file that could not be opened could not.
    const std::optional<Failure>& firstFailure() const { return m_firstFailure; }

private:
    void closeOldest();

    struct Slot
    {
        std::optional<File> file;
        std::uint64_t lastUse = 0;
    };

    std::vector<std::filesystem::path> m_paths;
    std::vector<Slot> m_slots;
    std::optional<Failure> m_firstFailure;
    std::size_t m_openCount = 0;
    std::uint64_t m_uses = 0;
};

} // namespace logstore
