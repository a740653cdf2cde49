// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/strings/sharedcache.h"
#include "platform/logstore/strings/uuidtext.h"

#include <map>
#include <unordered_map>

namespace logstore {

/// The string files of a store, opened when first asked for. Folder and file names are compared
/// without regard to case.
class StringFiles
{
public:
    /// `folders`: those that may hold the two-digit folders and `dsc`, in the order in which they
    /// are asked. Links that lead out of `allowedRoots` are not followed. `problems` takes the
    /// files that are missing or cannot be used.
    StringFiles(std::vector<std::filesystem::path> folders,
                std::vector<std::filesystem::path> allowedRoots,
                TextPool& pool,
                StoreProblems& problems);

    /// Null when there is no such file, or it is damaged.
    UuidText* uuidText(const Uuid& uuid);
    SharedCache* sharedCache(const Uuid& uuid);

    /// Drops the parsed format strings when they take more than a fixed amount of memory. Programs
    /// given out before are then invalid.
    void trim();

private:
    using NameMap = std::multimap<std::string, std::filesystem::path>; ///< upper-case name -> path
    const NameMap& listing(const std::filesystem::path& folder);
    template <typename StringFile>
    std::unique_ptr<StringFile> accepted(StoreResult<std::unique_ptr<StringFile>> opened);
    std::filesystem::path
    find(const Uuid& uuid, const std::string& folderName, const std::string& fileName);

    std::vector<std::filesystem::path> m_folders;
    std::vector<std::filesystem::path> m_allowedRoots;
    TextPool& m_pool;
    StoreProblems& m_problems;
    std::size_t m_formatBytes = 0; ///< of all parsed format strings
    std::size_t m_tableBytes = 0;  ///< of the tables of all string files
    std::map<std::filesystem::path, NameMap> m_listings;
    std::unordered_map<Uuid, std::unique_ptr<UuidText>, UuidHash> m_uuidTexts;
    std::unordered_map<Uuid, std::unique_ptr<SharedCache>, UuidHash> m_sharedCaches;
};

} // namespace logstore
