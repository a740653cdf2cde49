// SPDX-License-Identifier: MIT
#include "platform/logstore/strings/stringfiles.h"

#include "platform/logstore/folderlisting.h"

#include <algorithm>

namespace logstore {

namespace {

constexpr std::size_t formatBudget = std::size_t{12} << 20;
/// Thousands of real files stay below a quarter of this.
constexpr std::size_t tableBudget = std::size_t{64} << 20;

std::string hexText(const Uuid& uuid)
{
    std::string text = uuid.text();
    std::erase(text, '-');
    return text;
}

} // namespace

StringFiles::StringFiles(std::vector<std::filesystem::path> folders,
                         std::vector<std::filesystem::path> allowedRoots,
                         TextPool& pool,
                         StoreProblems& problems)
    : m_folders(std::move(folders))
    , m_allowedRoots(std::move(allowedRoots))
    , m_pool(pool)
    , m_problems(problems)
{
}

UuidText* StringFiles::uuidText(const Uuid& uuid)
{
    const auto [place, isNew] = m_uuidTexts.try_emplace(uuid);
    if (isNew) {
        const std::string name = hexText(uuid);
        if (const auto path = find(uuid, name.substr(0, 2), name.substr(2)); !path.empty())
            place->second = accepted(UuidText::open(path, uuid, m_pool));
    }
    return place->second.get();
}

SharedCache* StringFiles::sharedCache(const Uuid& uuid)
{
    const auto [place, isNew] = m_sharedCaches.try_emplace(uuid);
    if (isNew) {
        if (const auto path = find(uuid, "DSC", hexText(uuid)); !path.empty())
            place->second = accepted(SharedCache::open(path, m_pool));
    }
    return place->second.get();
}

/// Null for a file that failed to open, or whose tables are more than the budget allows.
template <typename StringFile>
std::unique_ptr<StringFile> StringFiles::accepted(StoreResult<std::unique_ptr<StringFile>> opened)
{
    if (!opened) {
        m_problems.add({ProblemKind::DamagedStrings, opened.error().name, opened.error().error});
        return nullptr;
    }
    if (m_tableBytes + (*opened)->tableBytes() > tableBudget) {
        m_problems.add({ProblemKind::DamagedStrings, (*opened)->path().string()});
        return nullptr;
    }
    m_tableBytes += (*opened)->tableBytes();
    (*opened)->formats().countIn(m_formatBytes);
    return std::move(*opened);
}

void StringFiles::trim()
{
    if (m_formatBytes <= formatBudget)
        return;
    for (const auto& [uuid, file] : m_uuidTexts)
        if (file)
            file->formats().clear();
    for (const auto& [uuid, file] : m_sharedCaches)
        if (file)
            file->formats().clear();
    m_formatBytes = 0;
}

const StringFiles::NameMap& StringFiles::listing(const std::filesystem::path& folder)
{
    const auto [place, isNew] = m_listings.try_emplace(folder);
    if (!isNew)
        return place->second;
    const auto items = listFolder(folder, m_allowedRoots);
    if (!items)
        m_problems.add(items.error());
    else
        for (const auto& path : *items)
            place->second.emplace(upperCase(path.filename().string()), path);
    return place->second;
}

std::filesystem::path
StringFiles::find(const Uuid& uuid, const std::string& folderName, const std::string& fileName)
{
    for (const auto& base : m_folders) {
        const auto [first, last] = listing(base).equal_range(folderName);
        for (auto folder = first; folder != last; ++folder) {
            const NameMap& files = listing(folder->second);
            if (const auto file = files.find(fileName); file != files.end())
                return file->second;
        }
    }
    m_problems.add({ProblemKind::MissingStrings, uuid.text()});
    return {};
}

} // namespace logstore
