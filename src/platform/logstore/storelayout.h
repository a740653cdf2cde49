// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/storeorigin.h"
#include "platform/logstore/storeproblems.h"

#include <filesystem>
#include <vector>

namespace logstore {

/// Where the files of a store lie.
struct StoreLayout
{
    std::vector<std::filesystem::path>
        traceFiles; ///< Persist, Special, Signpost, HighVolume, live; by name within
    std::vector<std::filesystem::path> timeFiles;     ///< by name
    std::vector<std::filesystem::path> stringFolders; ///< in the order in which they are asked
    std::vector<std::filesystem::path> roots;         ///< folders that links may lead into
    StoreProblems problems;                           ///< folders that could not be listed

    /// Fails when `root` is not a readable folder, is not laid out as a store, or holds no trace
    /// file.
    static StoreResult<StoreLayout> find(const std::filesystem::path& root, StoreOrigin origin);
};

} // namespace logstore
