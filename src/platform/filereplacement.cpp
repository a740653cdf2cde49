// SPDX-License-Identifier: MIT
#include "platform/filereplacement.h"

#include "platform/bytecopy.h"
#include "platform/keptattributes.h"
#include "platform/temporaryitem.h"

#include <QCoreApplication>
#include <QIODevice>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace fs = std::filesystem;

namespace {

QString shown(const fs::path& path)
{
    return QString::fromStdString(path.native());
}

QString lastError()
{
    return QString::fromStdString(std::generic_category().message(errno));
}

tl::unexpected<Failure> notWritten(const fs::path& path, const QString& why)
{
    return failure(
        QCoreApplication::translate("Failures", "The file “%1” could not be written: %2.")
            .arg(shown(path), why)
            .toStdString());
}

/// Writes to an open file without a buffer of its own, so that a failure shows in the call that
/// meets it. After a failure nothing more is written.
class FileWriter final : public QIODevice
{
public:
    explicit FileWriter(int file) : m_file(file) { open(WriteOnly | Unbuffered); }

    /// That of the first write that failed; 0 if none has.
    int error() const { return m_error; }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* /*to*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char* bytes, qint64 size) override
    {
        if (m_error == 0 && !writeBytes(m_file, bytes, size))
            m_error = errno;
        return m_error == 0 ? size : -1;
    }

private:
    int m_file;
    int m_error = 0;
};

/// The error of writing; 0 when all is written.
int written(int file, const std::function<bool(QIODevice&)>& write)
{
    FileWriter writer(file);
    const bool isComplete = write(writer);
    return isComplete || writer.error() != 0 ? writer.error() : ECANCELED;
}

/// The path that a link leads to in the end. Nothing need be there.
fs::path followed(fs::path path)
{
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; links < mostLinks && fs::is_symlink(path, error); ++links)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

/// Some file systems have nothing to do here, and say so with an error.
bool isSynchronised(int file)
{
    return ::fsync(file) == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

/// The new file in the place of the old one, under the rights of the old one.
class Replacement
{
public:
    explicit Replacement(const fs::path& path) : m_path(path), m_item(path) {}

    Result<void> run(const std::function<bool(QIODevice&)>& write);

private:
    /// Why there can be no replacement; empty when there can.
    QString refusal();
    bool fill(FileDescriptor& file, const std::function<bool(QIODevice&)>& write);
    bool keepRights(int file);

    fs::path m_path;
    TemporaryItem m_item;
    struct stat m_old = {};
    bool m_hasOld = false;
};

QString Replacement::refusal()
{
    m_hasOld = ::stat(m_path.c_str(), &m_old) == 0;
    if (!m_hasOld)
        return errno == ENOENT || errno == EACCES ? QString() : lastError();
    if (S_ISDIR(m_old.st_mode)) {
        errno = EISDIR;
        return lastError();
    }
    if (!S_ISREG(m_old.st_mode))
        return QCoreApplication::translate("Failures",
                                           "A device or pipe is not replaced by a file");
    return ::faccessat(AT_FDCWD, m_path.c_str(), W_OK, AT_EACCESS) < 0 ? lastError() : QString();
}

bool Replacement::keepRights(int file)
{
    if (!m_hasOld)
        return true;
    const FileDescriptor old(::open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    return keepAccess(old.number(), file, m_old);
}

bool Replacement::fill(FileDescriptor& file, const std::function<bool(QIODevice&)>& write)
{
    if (const int error = written(file.number(), write); error != 0) {
        errno = error;
        return false;
    }
    return keepRights(file.number()) && isSynchronised(file.number()) && file.close();
}

Result<void> Replacement::run(const std::function<bool(QIODevice&)>& write)
{
    if (const QString why = refusal(); !why.isEmpty())
        return notWritten(m_path, why);
    const fs::path folder = m_path.has_parent_path() ? m_path.parent_path() : fs::path(".");
    removeAbandonedItems(folder);
    FileDescriptor file = m_item.makeFile(m_hasOld ? 0600 : 0666);
    if (!file.isOpen())
        return notWritten(m_path, QCoreApplication::translate(
                                      "Failures", "No file can be created in the folder “%1”: %2")
                                      .arg(shown(folder), lastError()));
    if (!fill(file, write) || !m_item.replace())
        return notWritten(m_path, lastError());
    // The file is whole in any case; this keeps a loss of power from bringing the old one back.
    const FileDescriptor open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ::fsync(open.number());
    return {};
}

} // namespace

Result<void> replaceFile(const fs::path& path, const std::function<bool(QIODevice&)>& write)
{
    return Replacement(followed(path)).run(write);
}

Result<void> replaceFile(const fs::path& path, const QByteArray& contents)
{
    return replaceFile(path,
                       [&](QIODevice& file) { return file.write(contents) == contents.size(); });
}
