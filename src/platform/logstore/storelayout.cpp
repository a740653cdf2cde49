// SPDX-License-Identifier: MIT
#include "platform/logstore/storelayout.h"

#include "platform/logstore/folderlisting.h"

#include <algorithm>
#include <array>
#include <system_error>

namespace logstore {

namespace {

namespace fs = std::filesystem;

constexpr std::array traceFolders = {"Persist", "Special", "Signpost", "HighVolume"};
constexpr const char* liveFile = "logdata.LiveData.tracev3";

bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

bool holdsLogs(const fs::path& folder)
{
    std::error_code error;
    return std::any_of(traceFolders.begin(), traceFolders.end(),
                       [&folder](const char* name) { return isFolder(folder / name); })
           || isFolder(folder / "timesync") || fs::is_regular_file(folder / liveFile, error);
}

void addFiles(std::vector<fs::path>& files,
              const fs::path& folder,
              const char* extension,
              const std::vector<fs::path>& roots)
{
    if (!staysInside(folder, roots))
        return;
    for (const fs::path& path : listFolder(folder, roots))
        if (path.extension() == extension)
            files.push_back(path);
}

Result<fs::path> readableFolder(const fs::path& root)
{
    std::error_code error;
    const fs::path canonical = fs::canonical(root, error);
    if (error)
        return failure("The log archive “" + root.string()
                       + "” could not be opened: " + error.message() + ".");
    if (!isFolder(canonical))
        return failure("The log archive “" + root.string()
                       + "” could not be opened: it is not a folder.");
    const fs::directory_iterator probe(canonical, error);
    if (error)
        return failure("The log archive “" + root.string()
                       + "” could not be read: " + error.message() + ".");
    return canonical;
}

} // namespace

Result<StoreLayout> StoreLayout::find(const fs::path& root)
{
    const auto top = readableFolder(root);
    if (!top)
        return tl::unexpected(top.error());
    const fs::path logs = holdsLogs(*top) ? *top : *top / "diagnostics";
    if (!holdsLogs(logs))
        return failure("“" + root.string() + "” is not a log archive: it holds no log files.");

    StoreLayout layout;
    layout.roots = {*top};
    for (const fs::path& folder : {*top, *top / "uuidtext", top->parent_path() / "uuidtext"}) {
        layout.stringFolders.push_back(folder);
        std::error_code error;
        if (const fs::path target = fs::canonical(folder, error); !error)
            layout.roots.push_back(target);
    }
    std::error_code error;
    if (const fs::path target = fs::canonical(logs, error); !error)
        layout.roots.push_back(target);

    for (const char* name : traceFolders)
        addFiles(layout.traceFiles, logs / name, ".tracev3", layout.roots);
    if (fs::is_regular_file(logs / liveFile, error) && staysInside(logs / liveFile, layout.roots))
        layout.traceFiles.push_back(logs / liveFile);
    if (layout.traceFiles.empty())
        return failure("The log archive “" + root.string()
                       + "” could not be opened: it holds no trace files.");
    addFiles(layout.timeFiles, logs / "timesync", ".timesync", layout.roots);
    return layout;
}

} // namespace logstore
