// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filemanager.h"
#include "platform/panels.h"
#include "platform/platform.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

/// In what the tools differ where they do the same.
struct LogFolderToolSettings
{
    ContentType chosen = ContentType::Folder; ///< what is catalogued and analysed
    bool showsHidden = false;  ///< whether the panel that chooses it shows hidden files
    FilePath statisticsFolder; ///< the part of it that holds the statistics files
    QString proposedName;      ///< of the file that the text is saved to
};

/// What the tools on log folders have in common: the text that reports the last operation, the
/// catalogue of log data files and the analysis of the log daemon's statistics. Panels keep a tool
/// alive until they have completed, so it is always owned by a shared pointer.
class LogFolderTool : public QObject, public std::enable_shared_from_this<LogFolderTool>
{
    Q_OBJECT

public:
    QStringList theFileArray() const { return m_theFileArray; }
    QHash<QString, QString> theStatsDict() const { return m_theStatsDict; }
    QString theOutputText() const { return m_theOutputText; }
    void setTheOutputText(const QString& text);

    /// Asks for a folder and lists its log data files.
    void catalogue();
    /// Asks for a folder and reports on the statistics in it, as text or as comma-separated values.
    void analyse(bool csv);
    /// Asks for a file and writes the text into it as it was when asked.
    void saveText();

Q_SIGNALS:
    void theFileArrayChanged();
    void theStatsDictChanged();
    void theOutputTextChanged();
    /// Sent before and after work that may take its time.
    void workingChanged(bool working);
    /// Sent while files are copied: all that has been copied so far.
    void copied(const CopyProgress& progress);

protected:
    LogFolderTool(const Platform& platform, FileManager& files, LogFolderToolSettings settings);

    /// Shows the panel; runs `then` with the location when the user confirms one.
    void open(const OpenPanelRequest& request, const std::function<void(const QUrl&)>& then);
    void save(const SavePanelRequest& request, const std::function<void(const QUrl&)>& then);
    /// Lets the user choose what this tool works on.
    virtual void chooseFolder(const std::function<void(const FilePath&)>& then);
    OpenPanelRequest folderRequest() const;

    void append(const QString& text);
    void append(const Failure& why) { append(QString::fromStdString(why.description)); }

    const Platform& platform() const { return m_platform; }
    FileManager& files() const { return m_files; }

private:
    void catalogueFolder(const FilePath& folder);
    void analyseFolder(const FilePath& folder, bool csv);
    PanelCompletion completion(const std::function<void(const QUrl&)>& then);
    void setTheFileArray(const QStringList& lines);
    void setTheStatsDict(const QHash<QString, QString>& reports);

    Platform m_platform;
    FileManager& m_files;
    LogFolderToolSettings m_settings;
    QStringList m_theFileArray;
    QHash<QString, QString> m_theStatsDict;
    QString m_theOutputText;
};
