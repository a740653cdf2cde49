// SPDX-License-Identifier: MIT
#include "platform/settingsfile.h"

#include "platform/filedescriptor.h"
#include "platform/filereplacement.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace {

/// More than anybody types; a larger file is none of ours.
constexpr off_t largestFile = off_t{256} * 1024 * 1024;
constexpr std::chrono::milliseconds longestWait{2000};

FilePath asFilePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size
           && one.st_mtim.tv_sec == other.st_mtim.tv_sec
           && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

tl::unexpected<Failure> notWritten(const QString& path, const QString& why)
{
    return failure(
        QCoreApplication::translate("Failures", "The file “%1” could not be written: %2.")
            .arg(QDir::toNativeSeparators(path), why)
            .toStdString());
}

/// Locks a folder until it is closed; the system does that for a process that is killed. Returns
/// false when another process keeps it locked. Where there are no locks, saving goes on without.
bool waitForLock(const FileDescriptor& folder)
{
    const QDeadlineTimer deadline(longestWait);
    while (::flock(folder.number(), LOCK_EX | LOCK_NB) < 0 && errno == EWOULDBLOCK) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(10);
    }
    return true;
}

} // namespace

SettingsFile::State SettingsFile::state() const
{
    refresh();
    return m_state;
}

/// Reads the file unless it is the one that was read last.
void SettingsFile::refresh() const
{
    struct stat file = {};
    const bool exists = ::stat(asFilePath(m_path).c_str(), &file) == 0;
    const bool isAbsent = !exists && (errno == ENOENT || errno == ENOTDIR);
    if (m_read && isSame(*m_read, file))
        return;
    m_read = file;
    m_text = {};
    m_decoded.clear();
    m_state = isAbsent ? State::Readable : State::Unreadable;
    if (!exists || !S_ISREG(file.st_mode) || file.st_size > largestFile)
        return;
    const auto bytes = SystemFileManager().contentsOfFile(asFilePath(m_path));
    if (!bytes)
        return;
    m_text = readSettings(*bytes);
    m_state = m_text.isDamaged ? State::Damaged : State::Readable;
}

std::optional<QStringList> SettingsFile::value(const QString& key) const
{
    if (const auto unsaved = m_unsaved.constFind(key); unsaved != m_unsaved.constEnd())
        return *unsaved;
    refresh();
    if (const auto decoded = m_decoded.constFind(key); decoded != m_decoded.constEnd())
        return *decoded;
    const auto stored = m_text.values.constFind(key.toUtf8());
    if (stored == m_text.values.constEnd())
        return std::nullopt;
    return *m_decoded.insert(key, textsOfValue(*stored));
}

void SettingsFile::set(const QString& key, const std::optional<QStringList>& value)
{
    m_unsaved.insert(key, value);
}

Result<void> SettingsFile::save()
{
    return isSaved() ? Result<void>() : change([] {});
}

Result<void> SettingsFile::change(const std::function<void()>& change)
{
    const QString folder = QFileInfo(m_path).path();
    QDir().mkpath(folder); // if that fails, writing tells the reason
    const FileDescriptor lock(
        ::open(asFilePath(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const bool isFree = waitForLock(lock);
    change();
    if (!isFree)
        return notWritten(m_path,
                          QCoreApplication::translate("Failures", "Another program is using it"));
    return write();
}

Result<void> SettingsFile::write()
{
    if (state() != State::Readable)
        return notWritten(
            m_path, QCoreApplication::translate("Failures", "It cannot be read, or is damaged"));
    SettingsText text = m_text;
    for (auto changed = m_unsaved.constBegin(); changed != m_unsaved.constEnd(); ++changed) {
        if (*changed)
            text.values.insert(changed.key().toUtf8(), valueOfTexts(**changed));
        else
            text.values.remove(changed.key().toUtf8());
    }
    auto written = replaceFile(asFilePath(m_path), writeSettings(text));
    if (!written)
        return written;
    m_text = std::move(text);
    m_decoded.insert(m_unsaved);
    m_unsaved.clear();
    m_read.emplace();
    ::stat(asFilePath(m_path).c_str(), &*m_read);
    return {};
}
