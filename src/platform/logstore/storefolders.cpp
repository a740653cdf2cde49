// SPDX-License-Identifier: MIT
#include "platform/logstore/storefolders.h"

#include "platform/logstore/folderlisting.h"

#include <algorithm>
#include <array>
#include <system_error>

namespace logstore {

namespace {

namespace fs = std::filesystem;

using Names = std::vector<const char*>;

/// The ways from a chosen folder to the logs, the first one that leads to some counts.
const std::array<Names, 5>& waysToLogs()
{
    static const std::array<Names, 5> ways{Names{},
                                           {"diagnostics"},
                                           {"private", "var", "db", "diagnostics"},
                                           {"var", "db", "diagnostics"},
                                           {"system_logs.logarchive"}};
    return ways;
}

bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

bool holdsLogs(const fs::path& folder)
{
    const auto holdsFolder = [&folder](const char* name) {
        const auto items = itemsNamed(folder, name);
        return std::any_of(items.begin(), items.end(), isFolder);
    };
    const auto isFile = [](const fs::path& path) {
        std::error_code error;
        return fs::is_regular_file(path, error);
    };
    const auto live = itemsNamed(folder, liveFile);
    return std::any_of(traceFolders.begin(), traceFolders.end(), holdsFolder)
           || holdsFolder("timesync") || std::any_of(live.begin(), live.end(), isFile);
}

std::vector<fs::path> follow(const fs::path& top, const Names& way)
{
    std::vector<fs::path> folders{top};
    for (const char* name : way) {
        std::vector<fs::path> next;
        for (const fs::path& folder : folders)
            for (fs::path& item : itemsNamed(folder, name))
                next.push_back(std::move(item));
        folders = std::move(next);
    }
    return folders;
}

/// Takes the folders of logs at the end of one way; the system's may be links to anywhere.
void findLogs(StoreFolders& store, const std::vector<fs::path>& folders, StoreOrigin origin)
{
    for (const fs::path& folder : folders) {
        if (!holdsLogs(folder))
            continue;
        std::error_code error;
        const fs::path target = fs::canonical(folder, error);
        if (!error && origin == StoreOrigin::System)
            store.roots.push_back(target);
        if (staysInside(folder, store.roots))
            store.logs.push_back(folder);
    }
}

void addStrings(StoreFolders& store, const fs::path& folder, StoreOrigin origin)
{
    std::error_code error;
    const fs::path target = fs::canonical(folder, error);
    const bool isLink = target != folder;
    if (!error && (!isLink || origin == StoreOrigin::System))
        store.roots.push_back(target);
    const bool isNew =
        std::find(store.strings.begin(), store.strings.end(), folder) == store.strings.end();
    if (!error && isNew && staysInside(folder, store.roots))
        store.strings.push_back(folder);
}

} // namespace

StoreFolders StoreFolders::find(const fs::path& top, StoreOrigin origin)
{
    StoreFolders store;
    store.roots = {top};
    for (const Names& way : waysToLogs()) {
        findLogs(store, follow(top, way), origin);
        if (!store.logs.empty())
            break;
    }
    for (const fs::path& logs : store.logs) {
        addStrings(store, logs, origin);
        for (const fs::path& folder : {logs, logs.parent_path()})
            for (const fs::path& strings : itemsNamed(folder, "uuidtext"))
                addStrings(store, strings, origin);
    }
    return store;
}

bool isStore(const fs::path& folder)
{
    std::error_code error;
    const fs::path top = fs::canonical(folder, error);
    return !error && !StoreFolders::find(top, StoreOrigin::HandedOver).logs.empty();
}

std::optional<fs::path> archiveInside(const fs::path& folder)
{
    std::error_code error;
    const fs::path top = fs::canonical(folder, error);
    if (error || isStore(top))
        return std::nullopt;
    const auto items = listFolder(top, {top});
    if (!items)
        return std::nullopt;
    const auto found = std::find_if(items->begin(), items->end(), [](const fs::path& path) {
        return upperCase(path.extension().string()) == ".LOGARCHIVE" && isStore(path);
    });
    return found == items->end() ? std::nullopt : std::optional(*found);
}

} // namespace logstore
