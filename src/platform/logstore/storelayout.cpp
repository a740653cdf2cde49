// SPDX-License-Identifier: MIT
#include "platform/logstore/storelayout.h"

#include "platform/logstore/folderlisting.h"
#include "platform/logstore/storefolders.h"

#include <system_error>

namespace logstore {

namespace {

namespace fs = std::filesystem;

/// Collects the log files of a store's folders.
class LogFileCollector
{
public:
    LogFileCollector(const std::vector<fs::path>& roots, StoreProblems& problems)
        : m_roots(roots)
        , m_problems(problems)
    {
    }

    void add(std::vector<fs::path>& files, const fs::path& folder, const char* extension)
    {
        if (!staysInside(folder, m_roots))
            return;
        const auto items = listFolder(folder, m_roots);
        if (!items)
            return m_problems.add(items.error());
        constexpr std::size_t nameSize = 16;
        for (const fs::path& path : *items)
            if (upperCase(path.extension().string()) == upperCase(extension)
                && isHexName(path.stem().string(), nameSize))
                files.push_back(path);
    }

private:
    const std::vector<fs::path>& m_roots;
    StoreProblems& m_problems;
};

StoreResult<fs::path> readableFolder(const fs::path& root)
{
    std::error_code error;
    const fs::path canonical = fs::canonical(root, error);
    if (error)
        return storeProblem(ProblemKind::UnreadableFolder, root, error.value());
    if (!fs::is_directory(canonical, error))
        return storeProblem(ProblemKind::NotAFolder, root);
    const fs::directory_iterator probe(canonical, error);
    if (error)
        return storeProblem(ProblemKind::UnreadableFolder, root, error.value());
    return canonical;
}

/// A folder whose items may not be looked at is not one without logs.
StoreProblem reasonWhyNoLogs(const fs::path& root, const fs::path& top)
{
    for (const fs::path& folder : {top, top / "diagnostics"}) {
        std::error_code error;
        const fs::file_status status = fs::status(folder / traceFolders[0], error);
        if (!fs::status_known(status) && error == std::errc::permission_denied)
            return {ProblemKind::UnreadableFolder, folder.string(), error.value()};
    }
    return {ProblemKind::NotAStore, root.string()};
}

} // namespace

StoreResult<StoreLayout> StoreLayout::find(const fs::path& root, StoreOrigin origin)
{
    const auto top = readableFolder(root);
    if (!top)
        return tl::unexpected(top.error());
    const StoreFolders folders = StoreFolders::find(*top, origin);
    if (folders.logs.empty())
        return tl::unexpected(reasonWhyNoLogs(root, *top));
    StoreLayout layout{{}, {}, folders.strings, folders.roots, StoreProblems(*top)};

    LogFileCollector collector(layout.roots, layout.problems);
    for (const char* name : traceFolders)
        for (const fs::path& logs : folders.logs)
            for (const fs::path& folder : itemsNamed(logs, name))
                collector.add(layout.traceFiles, folder, ".tracev3");
    for (const fs::path& logs : folders.logs)
        for (const fs::path& file : itemsNamed(logs, liveFile))
            if (std::error_code error;
                fs::is_regular_file(file, error) && staysInside(file, layout.roots))
                layout.traceFiles.push_back(file);
    if (layout.traceFiles.empty() && !layout.problems.list().empty())
        return tl::unexpected(layout.problems.list().front());
    if (layout.traceFiles.empty())
        return storeProblem(ProblemKind::NotAStore, root);
    for (const fs::path& logs : folders.logs)
        for (const fs::path& folder : itemsNamed(logs, "timesync"))
            collector.add(layout.timeFiles, folder, ".timesync");
    return layout;
}

} // namespace logstore
