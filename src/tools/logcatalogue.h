// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

#include <QStringList>
#include <QTimeZone>

/// One line for each log data file of some folders.
class LogCatalogue
{
public:
    /// Dates are written in the zone.
    LogCatalogue(FileManager& files, const QTimeZone& zone) : m_files(files), m_zone(zone) {}

    /// Adds the log data files directly inside the folder. Their lines begin with the label.
    void addFolder(const FilePath& folder, const QString& label);

    /// In ascending order.
    QStringList sortedLines() const;
    /// The descriptions of what could not be read, one after the other.
    QString errors() const { return m_errors; }

private:
    void addFile(const FilePath& file, const QString& label);
    QString dateText(FileTime time) const;

    FileManager& m_files;
    QTimeZone m_zone;
    QStringList m_lines;
    QString m_errors;
};
