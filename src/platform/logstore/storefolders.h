// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/storeorigin.h"

#include <array>
#include <filesystem>
#include <optional>
#include <vector>

namespace logstore {

/// The folders of a store, whose names count in any case: where several differ in nothing else, all
/// of them belong to it. Logs are in the folder that was chosen, or below it as in a Mac's log
/// folders, on a disk, or beside the other files of a sysdiagnose. String files are in the same
/// folder, or in `uuidtext` in or beside it.
struct StoreFolders
{
    std::vector<std::filesystem::path> logs;    ///< with folders of trace files; none = no store
    std::vector<std::filesystem::path> strings; ///< in the order in which they are asked
    std::vector<std::filesystem::path> roots;   ///< folders that links may lead into

    /// `top` is canonical.
    static StoreFolders find(const std::filesystem::path& top, StoreOrigin origin);
};

inline constexpr std::array traceFolders = {"Persist", "Special", "Signpost", "HighVolume"};
inline constexpr const char* liveFile = "logdata.LiveData.tracev3";

/// Whether a store is found from this folder.
bool isStore(const std::filesystem::path& folder);

/// The log archive in a folder that is not a store itself.
std::optional<std::filesystem::path> archiveInside(const std::filesystem::path& folder);

} // namespace logstore
