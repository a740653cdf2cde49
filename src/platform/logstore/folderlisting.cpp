// SPDX-License-Identifier: MIT
#include "platform/logstore/folderlisting.h"

#include <algorithm>
#include <system_error>

namespace logstore {

namespace {

namespace fs = std::filesystem;

bool liesBelow(const fs::path& path, const fs::path& root)
{
    const auto [rootEnd, ignored] =
        std::mismatch(root.begin(), root.end(), path.begin(), path.end());
    return rootEnd == root.end();
}

bool mayFollow(const fs::directory_entry& entry, const std::vector<fs::path>& allowedRoots)
{
    std::error_code error;
    return !entry.is_symlink(error) || staysInside(entry.path(), allowedRoots);
}

} // namespace

bool staysInside(const fs::path& path, const std::vector<fs::path>& allowedRoots)
{
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    return !error
           && std::any_of(allowedRoots.begin(), allowedRoots.end(),
                          [&target](const fs::path& root) { return liesBelow(target, root); });
}

StoreResult<std::vector<fs::path>> listFolder(const fs::path& folder,
                                              const std::vector<fs::path>& allowedRoots)
{
    std::vector<fs::path> items;
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (const fs::directory_iterator end; !error && entries != end; entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        if (!name.starts_with("._") && mayFollow(*entries, allowedRoots))
            items.push_back(entries->path());
    }
    if (error)
        return storeProblem(ProblemKind::UnreadableFolder, folder, error.value());
    std::sort(items.begin(), items.end());
    return items;
}

std::vector<fs::path> itemsNamed(const fs::path& folder, const std::string& name)
{
    std::vector<fs::path> items;
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (const fs::directory_iterator end; !error && entries != end; entries.increment(error))
        if (upperCase(entries->path().filename().string()) == upperCase(name))
            items.push_back(entries->path());
    if (error)
        return {folder / name};
    std::sort(items.begin(), items.end());
    return items;
}

bool isHexName(std::string_view name, std::size_t size)
{
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    return name.size() == size && name.find_first_not_of(digits) == std::string_view::npos;
}

std::string upperCase(std::string text)
{
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

} // namespace logstore
