// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

#include <QVariantMap>

#include <functional>

/// Builds one log archive. What fails is reported, and the build goes on without it.
class ArchiveBuild
{
public:
    /// With `debug` each step is reported before it is taken.
    ArchiveBuild(FileManager& files, FilePath source, FilePath destination, bool debug)
        : m_files(files)
        , m_source(std::move(source))
        , m_destination(std::move(destination))
        , m_debug(debug)
    {
    }

    /// Takes the texts that say what happens.
    std::function<void(const QString&)> report;

    /// Copies the log data folders, and the loose files of the diagnostics folder into "Extra".
    void copyLogs();
    /// Writes the archive's "Info.plist", in which `tickCount` is the moment that the archive ends
    /// at.
    void writeInfo(quint64 tickCount);

private:
    void copy(const FilePath& from, const FilePath& to);
    void copyLooseFiles();
    QVariantMap versionDictionary();
    void reportStep(const QString& step) const;
    bool reportFailure(const Result<void>& result) const;

    FileManager& m_files;
    FilePath m_source;
    FilePath m_destination;
    bool m_debug;
};
