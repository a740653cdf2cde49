// SPDX-License-Identifier: MIT
#include "platform/logstore/storelayout.h"

#include "platform/logstore/folderlisting.h"

#include <algorithm>
#include <array>
#include <optional>
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

/// Collects the log files of a store's folders.
class LogFileCollector
{
public:
    explicit LogFileCollector(const std::vector<fs::path>& roots) : m_roots(roots) {}

    void add(std::vector<fs::path>& files, const fs::path& folder, const char* extension)
    {
        if (!staysInside(folder, m_roots))
            return;
        const auto items = listFolder(folder, m_roots);
        if (!items && !m_firstFailure)
            m_firstFailure = items.error();
        if (!items)
            return;
        constexpr std::size_t nameSize = 16;
        for (const fs::path& path : *items)
            if (path.extension() == extension && isHexName(path.stem().string(), nameSize))
                files.push_back(path);
    }

    const std::optional<Failure>& firstFailure() const { return m_firstFailure; }

private:
    const std::vector<fs::path>& m_roots;
    std::optional<Failure> m_firstFailure;
};

/// The folders that string files may stand in, those first that are asked first. `roots` grows by
/// what links may lead into.
std::vector<fs::path>
foldersOfStrings(const fs::path& top, StoreOrigin origin, std::vector<fs::path>& roots)
{
    const fs::path inside = top / "uuidtext";
    const fs::path beside = top.parent_path() / "uuidtext";
    std::vector<fs::path> folders{top};
    for (const fs::path& folder : {inside, beside}) {
        std::error_code error;
        const fs::path target = fs::canonical(folder, error);
        const bool isLink = target != folder;
        if (!error && (!isLink || origin == StoreOrigin::System))
            roots.push_back(target);
        if (!error && staysInside(folder, roots))
            folders.push_back(folder);
    }
    return folders;
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

/// A folder whose items may not be looked at is not one without logs.
std::string reasonWhyNoLogs(const fs::path& root, const fs::path& top)
{
    for (const fs::path& folder : {top, top / "diagnostics"}) {
        std::error_code error;
        const fs::file_status status = fs::status(folder / traceFolders[0], error);
        if (!fs::status_known(status) && error == std::errc::permission_denied)
            return "“" + folder.string() + "” could not be read: " + error.message() + ".";
    }
    return "“" + root.string() + "” is not a log archive: it holds no log files.";
}

} // namespace

Result<StoreLayout> StoreLayout::find(const fs::path& root, StoreOrigin origin)
{
    const auto top = readableFolder(root);
    if (!top)
        return tl::unexpected(top.error());
    StoreLayout layout;
    layout.roots = {*top};
    layout.stringFolders = foldersOfStrings(*top, origin, layout.roots);

    std::error_code error;
    const fs::path logs = holdsLogs(*top) ? *top : *top / "diagnostics";
    if (const fs::path target = fs::canonical(logs, error); !error && origin == StoreOrigin::System)
        layout.roots.push_back(target);
    if (!holdsLogs(logs) || !staysInside(logs, layout.roots))
        return failure(reasonWhyNoLogs(root, *top));

    LogFileCollector collector(layout.roots);
    for (const char* name : traceFolders)
        collector.add(layout.traceFiles, logs / name, ".tracev3");
    if (fs::is_regular_file(logs / liveFile, error) && staysInside(logs / liveFile, layout.roots))
        layout.traceFiles.push_back(logs / liveFile);
    if (layout.traceFiles.empty() && collector.firstFailure())
        return tl::unexpected(*collector.firstFailure());
    if (layout.traceFiles.empty())
        return failure("The log archive “" + root.string()
                       + "” could not be opened: it holds no trace files.");
    collector.add(layout.timeFiles, logs / "timesync", ".timesync");
    return layout;
}

} // namespace logstore
