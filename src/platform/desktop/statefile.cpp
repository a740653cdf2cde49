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
    const QStringList stored = m_file.value(lastFolderKey).value_or(QStringList());
    for (const QString& folder :
         {stored.value(0), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)})
        if (!folder.isEmpty() && QDir(folder).exists())
            return folder;
    return QDir::homePath();
}

void StateFile::setLastFolder(const QString& path)
{
    keep(lastFolderKey, {{path}});
}

QStringList StateFile::recentFiles() const
{
    return m_file.value(recentFilesKey).value_or(QStringList());
}

void StateFile::addRecentFile(const QString& path)
{
    constexpr qsizetype most = 10;
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    // Read with the file locked: another process may be adding one.
    static_cast<void>(m_file.change([&] {
        QStringList files = recentFiles();
        files.removeAll(absolute);
        files.prepend(absolute);
        m_file.set(recentFilesKey, files.mid(0, most));
    }));
}

void StateFile::clearRecentFiles()
{
    keep(recentFilesKey, std::nullopt);
}

QByteArray StateFile::arrangement(const QString& identifier) const
{
    const QStringList stored = m_file.value(arrangementKey(identifier)).value_or(QStringList());
    return *QByteArray::fromBase64Encoding(stored.value(0).toLatin1(),
                                           QByteArray::AbortOnBase64DecodingErrors);
}

void StateFile::setArrangement(const QString& identifier, const QByteArray& state)
{
    keep(arrangementKey(identifier), {{QString::fromLatin1(state.toBase64())}});
}

/// What cannot be kept is forgotten when Tessel quits, without a word: nobody asked to keep it.
void StateFile::keep(const QString& key, const std::optional<QStringList>& value)
{
    if (m_file.value(key) == value)
        return;
    m_file.set(key, value);
    static_cast<void>(m_file.save());
}
