// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clocktime.h"
#include "platform/filemanager.h"

#include <QStringList>

/// One line for each log data file of some folders.
class LogCatalogue
{
public:
    /// Dates are written in the zone.
    LogCatalogue(FileManager& files, const QTimeZone& zone)
        : m_files(files)
        , m_created(zone)
        , m_modified(zone)
    {
    }

    /// Adds the log data files directly inside the folder. Their lines begin with the label.
    void addFolder(const FilePath& folder, const QString& label);

    /// The lines in ascending order. Ends the catalogue.
    QStringList takeSortedLines();
    /// The descriptions of what could not be read, one after the other.
    QString errors() const { return m_errors; }

private:
    QString lineOf(const std::string& name, const FileAttributes& file, const QString& label);

    FileManager& m_files;
    ClockTimeWriter m_created; // two, as each remembers one period of the zone
    ClockTimeWriter m_modified;
    QStringList m_lines;
    QString m_errors;
};
