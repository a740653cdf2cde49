// SPDX-License-Identifier: MIT
#include "platform/desktop/statefile.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

const QString lastFolderKey = u"lastFolder"_s;
const QString recentFilesKey = u"recentFiles"_s;

QString arrangementKey(const QString& identifier)
{
    return u"arrangements/"_s + identifier;
}

} // namespace

StateFile::StateFile(const QString& path) : m_settings(path, QSettings::IniFormat)
{
}

QString StateFile::defaultPath()
{
    // The toolkit knows no such location.
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + u"/.local/state"_s;
    return folder + u"/Tessel/state.ini"_s;
}

QString StateFile::lastFolder() const
{
    for (const QString& folder :
         {m_settings.value(lastFolderKey).toString(),
          QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)})
        if (!folder.isEmpty() && QDir(folder).exists())
            return folder;
    return QDir::homePath();
}

void StateFile::setLastFolder(const QString& path)
{
    m_settings.setValue(lastFolderKey, path);
}

QStringList StateFile::recentFiles() const
{
    return m_settings.value(recentFilesKey).toStringList();
}

void StateFile::addRecentFile(const QString& path)
{
    constexpr qsizetype most = 10;
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    QStringList files = recentFiles();
    files.removeAll(absolute);
    files.prepend(absolute);
    m_settings.setValue(recentFilesKey, files.mid(0, most));
}

void StateFile::clearRecentFiles()
{
    m_settings.remove(recentFilesKey);
}

QByteArray StateFile::arrangement(const QString& identifier) const
{
    return m_settings.value(arrangementKey(identifier)).toByteArray();
}

void StateFile::setArrangement(const QString& identifier, const QByteArray& state)
{
    m_settings.setValue(arrangementKey(identifier), state);
}
