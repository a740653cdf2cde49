// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"

#include <QHash>
#include <QStringList>

/// What the log daemon's statistics files say about the log data files that it has rotated out:
/// which processes wrote how much into each.
class LogStatistics
{
public:
    enum class Form { Text, Csv };

    explicit LogStatistics(Form form) : m_form(form) {}

    /// Analyses the statistics files directly inside the folder.
    void analyseFolder(FileManager& files, const FilePath& folder);
    /// Analyses the text of one statistics file, in UTF-8.
    void analyseText(QByteArrayView text);

    /// The names of the log data files, once for each record, in the order met.
    const QStringList& fileNames() const { return m_fileNames; }
    /// For each name the report of the last record that speaks of it.
    const QHash<QString, QString>& reports() const { return m_reports; }
    /// The descriptions of what could not be read, one after the other.
    QString errors() const { return m_errors; }

private:
    void analyseFile(FileManager& files, const FilePath& file);
    void analyseRecord(const QString& record);

    Form m_form;
    QStringList m_fileNames;
    QHash<QString, QString> m_reports;
    QString m_errors;
    QString m_report; ///< the one in the making
};
