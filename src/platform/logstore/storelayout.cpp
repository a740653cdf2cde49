// SPDX-License-Identifier: MIT
#include "platform/logstore/storelayout.h"

#include "platform/logstore/folderlisting.h"
#include "platform/logstore/storefolders.h"

#include <optional>
#include <system_error>

namespace logstore {

namespace {

namespace fs = std::filesystem;

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
            if (upperCase(path.extension().string()) == upperCase(extension)
                && isHexName(path.stem().string(), nameSize))
                files.push_back(path);
    }

    const std::optional<Failure>& firstFailure() const { return m_firstFailure; }

private:
    const std::vector<fs::path>& m_roots;
    std::optional<Failure> m_firstFailure;
};

Result<fs::path> readableFolder(const fs::path& root)
{
    std::error_code error;
    const fs::path canonical = fs::canonical(root, error);
    if (error)
        return failure("The log archive “" + root.string()
                       + "” could not be opened: " + error.message() + ".");
    if (!fs::is_directory(canonical, error))
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
    const StoreFolders folders = StoreFolders::find(*top, origin);
    if (folders.logs.empty())
        return failure(reasonWhyNoLogs(root, *top));
    StoreLayout layout;
    layout.roots = folders.roots;
    layout.stringFolders = folders.strings;

    LogFileCollector collector(layout.roots);
    for (const char* name : traceFolders)
        for (const fs::path& logs : folders.logs)
            for (const fs::path& folder : itemsNamed(logs, name))
                collector.add(layout.traceFiles, folder, ".tracev3");
    for (const fs::path& logs : folders.logs)
        for (const fs::path& file : itemsNamed(logs, liveFile))
            if (std::error_code error;
                fs::is_regular_file(file, error) && staysInside(file, layout.roots))
                layout.traceFiles.push_back(file);
    if (layout.traceFiles.empty() && collector.firstFailure())
        return tl::unexpected(*collector.firstFailure());
    if (layout.traceFiles.empty())
        return failure("The log archive “" + root.string()
                       + "” could not be opened: it holds no trace files.");
    for (const fs::path& logs : folders.logs)
        for (const fs::path& folder : itemsNamed(logs, "timesync"))
            collector.add(layout.timeFiles, folder, ".timesync");
    return layout;
}

} // namespace logstore
