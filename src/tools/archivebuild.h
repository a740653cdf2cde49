// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

#include <QVariantMap>

#include <functional>

/// What a build tells of itself.
struct ArchiveBuildReports
{
    std::function<void(const QString&)> text; ///< takes the texts that say what happens
    CopyObserver copied;                      ///< takes all that has been copied so far
};

/// Builds one log archive. What fails is reported, and the build goes on without it.
class ArchiveBuild
{
public:
    /// With `debug` each step is reported before it is taken.
    ArchiveBuild(FileManager& files,
                 FilePath source,
                 FilePath destination,
                 bool debug,
                 ArchiveBuildReports reports)
        : m_files(files)
        , m_source(std::move(source))
        , m_destination(std::move(destination))
        , m_debug(debug)
        , m_reports(std::move(reports))
    {
    }

    /// Copies the log data folders, and the loose files of the diagnostics folder into "Extra".
    void copyLogs();
    /// Writes the archive's "Info.plist", in which `tickCount` is the moment that the archive ends
    /// at.
    void writeInfo(quint64 tickCount);
    /// Gives the archive the attributes of "uuidtext", which may forbid adding to it.
    void finish();

private:
    void copy(const FilePath& from, const FilePath& to, CopiedTop top);
    void copyLooseFiles();
    QVariantMap versionDictionary();
    void reportStep(const QString& step) const;
    bool reportFailure(const Result<void>& result) const;

    FileManager& m_files;
    FilePath m_source;
    FilePath m_destination;
    bool m_debug;
    ArchiveBuildReports m_reports;
    CopyProgress m_copied;
    bool m_isNew = false; ///< whether the destination was free
};
