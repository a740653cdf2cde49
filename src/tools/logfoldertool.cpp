// SPDX-License-Identifier: MIT
#include "tools/logfoldertool.h"

#include "platform/clock.h"
#include "tools/logcatalogue.h"
#include "tools/logstatistics.h"

#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

LogFolderTool::LogFolderTool(const Platform& platform,
                             FileManager& files,
                             LogFolderToolSettings settings)
    : m_platform(platform)
    , m_files(files)
    , m_settings(std::move(settings))
{
}

void LogFolderTool::setTheOutputText(const QString& text)
{
    if (m_theOutputText == text)
        return;
    m_theOutputText = text;
    Q_EMIT theOutputTextChanged();
}

void LogFolderTool::append(const QString& text)
{
    if (text.isEmpty())
        return;
    m_theOutputText += text;
    Q_EMIT theOutputTextChanged();
}

void LogFolderTool::setTheFileArray(const QStringList& lines)
{
    if (m_theFileArray == lines)
        return;
    m_theFileArray = lines;
    Q_EMIT theFileArrayChanged();
}

void LogFolderTool::setTheStatsDict(const QHash<QString, QString>& reports)
{
    if (m_theStatsDict == reports)
        return;
    m_theStatsDict = reports;
    Q_EMIT theStatsDictChanged();
}

void LogFolderTool::catalogue()
{
    chooseFolder([this](const FilePath& folder) { catalogueFolder(folder); });
}

void LogFolderTool::analyse(bool csv)
{
    chooseFolder([this, csv](const FilePath& folder) { analyseFolder(folder, csv); });
}

void LogFolderTool::saveText()
{
    save({ContentType::Text, m_settings.proposedName},
         [this, text = m_theOutputText.toUtf8()](const QUrl& location) {
             if (const auto written = m_files.writeFile(filePath(location), text); !written)
                 append(written.error());
         });
}

void LogFolderTool::catalogueFolder(const FilePath& folder)
{
    LogCatalogue catalogue(m_files, m_platform.clock.timeZone());
    catalogue.addFolder(folder, {});
    for (const QString& name : {u"Persist"_s, u"Special"_s, u"Signpost"_s})
        catalogue.addFolder(folder / name.toStdString(), name);
    setTheFileArray(catalogue.takeSortedLines());
    const QString heading = u"Catalogue listing of "_s + shownPath(folder) + u" :\n\n"_s;
    setTheOutputText((QStringList{heading, catalogue.errors()} + m_theFileArray).join(QString()));
}

void LogFolderTool::analyseFolder(const FilePath& folder, bool csv)
{
    LogStatistics statistics(csv ? LogStatistics::Form::Csv : LogStatistics::Form::Text);
    statistics.analyseFolder(m_files, m_settings.statisticsFolder.empty()
                                          ? folder
                                          : folder / m_settings.statisticsFolder);
    QStringList names = statistics.fileNames();
    std::ranges::stable_sort(names);

    QString text = csv ? u"date,time,totalsize,filename,size,percent,process\n"_s
                       : u"Analysis of "_s + shownPath(folder) + u" :\n\n"_s;
    text += statistics.errors();
    for (const QString& name : names)
        text += statistics.reports().value(name);
    setTheFileArray(names);
    setTheStatsDict(statistics.reports());
    setTheOutputText(text);
}

void LogFolderTool::chooseFolder(const std::function<void(const FilePath&)>& then)
{
    open(folderRequest(), [then](const QUrl& location) { then(filePath(location)); });
}

OpenPanelRequest LogFolderTool::folderRequest() const
{
    OpenPanelRequest request;
    request.contentType = m_settings.chosen;
    request.showsHidden = m_settings.showsHidden;
    return request;
}

void LogFolderTool::open(const OpenPanelRequest& request,
                         const std::function<void(const QUrl&)>& then)
{
    m_platform.panels.open(request, completion(then));
}

void LogFolderTool::save(const SavePanelRequest& request,
                         const std::function<void(const QUrl&)>& then)
{
    m_platform.panels.save(request, completion(then));
}

PanelCompletion LogFolderTool::completion(const std::function<void(const QUrl&)>& then)
{
    return [self = shared_from_this(), then](const PanelResult& result) {
        if (!result.confirmed || !result.location)
            return;
        Q_EMIT self->workingChanged(true);
        const auto done = qScopeGuard([&self] { Q_EMIT self->workingChanged(false); });
        then(*result.location);
    };
}
