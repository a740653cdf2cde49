// SPDX-License-Identifier: MIT
#include "platform/itemcopy.h"

#include "platform/bytecopy.h"
#include "platform/filedescriptor.h"
#include "platform/keptattributes.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <system_error>

namespace {

/// Where a copy goes: a name in an open folder.
struct Target
{
    int folder;
    const char* name;
};

/// Copies one item and all below it. Works from open folders, so that no renaming elsewhere in the
/// tree can lead it astray.
class ItemCopy
{
public:
    explicit ItemCopy(const CopyObserver& observer) : m_observer(observer) {}

    bool copy(int folder, const char* name, const Target& target, const FilePath& path);

    /// Why it failed, and on what.
    std::error_code error;
    FilePath failedAt;

private:
    bool copyFile(int folder, const char* name, const Target& target);
    bool copyFolder(int folder, const char* name, const Target& target, const FilePath& path);
    bool copyLink(int folder, const char* name, const Target& target, const struct stat& item);
    bool copyEntries(const FileDescriptor& from, int to, const FilePath& path);
    bool isGone(int folder, const char* name);
    /// The observer may run events, and those may change errno: only called after a success.
    void count(const CopyProgress& progress);

    const CopyObserver& m_observer;
    CopyProgress m_progress;
    int m_depth = 0;
};

void ItemCopy::count(const CopyProgress& progress)
{
    m_progress.items += progress.items;
    m_progress.bytes += progress.bytes;
    if (m_observer)
        m_observer(m_progress);
}

/// Keeps the reason of a failure, unless it is that the item was deleted meanwhile.
bool ItemCopy::isGone(int folder, const char* name)
{
    const std::error_code why(errno, std::generic_category());
    struct stat item = {};
    if (m_depth > 0 && why == std::errc::no_such_file_or_directory
        && ::fstatat(folder, name, &item, AT_SYMLINK_NOFOLLOW) < 0 && errno == ENOENT)
        return true;
    error = why;
    return false;
}

bool ItemCopy::copy(int folder, const char* name, const Target& target, const FilePath& path)
{
    struct stat item = {};
    bool isCopied = false;
    errno = 0;
    if (::fstatat(folder, name, &item, AT_SYMLINK_NOFOLLOW) == 0) {
        switch (item.st_mode & S_IFMT) {
        case S_IFREG: isCopied = copyFile(folder, name, target); break;
        case S_IFDIR: isCopied = copyFolder(folder, name, target, path); break;
        case S_IFLNK: isCopied = copyLink(folder, name, target, item); break;
        default: errno = EOPNOTSUPP; // a pipe, a socket or a device
        }
    }
    if (isCopied) {
        count({1, 0});
        return true;
    }
    if (error)
        return false; // something below has failed, and that is the one to name
    if (isGone(folder, name))
        return true;
    failedAt = path;
    return false;
}

bool ItemCopy::copyFile(int folder, const char* name, const Target& target)
{
    const FileDescriptor from(
        ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat item = {};
    if (!from.isOpen() || ::fstat(from.number(), &item) < 0)
        return false;
    FileDescriptor to(
        ::openat(target.folder, target.name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    return to.isOpen()
           && copyBytes(from.number(), to.number(), item.st_size,
                        [this](std::uint64_t bytes) {
                            count({0, bytes});
                        })
           && keepAttributes(from.number(), to.number(), item) && to.close();
}

bool ItemCopy::copyFolder(int folder, const char* name, const Target& target, const FilePath& path)
{
    constexpr int asFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const FileDescriptor from(::openat(folder, name, asFolder));
    struct stat item = {};
    if (!from.isOpen() || ::fstat(from.number(), &item) < 0
        || ::mkdirat(target.folder, target.name, 0700) < 0)
        return false;
    const FileDescriptor to(::openat(target.folder, target.name, asFolder));
    return to.isOpen() && copyEntries(from, to.number(), path)
           && keepAttributes(from.number(), to.number(), item);
}

bool ItemCopy::copyEntries(const FileDescriptor& from, int to, const FilePath& path)
{
    const OpenFolder folder(::fdopendir(::dup(from.number())));
    if (!folder)
        return false;
    ++m_depth;
    bool isCopied = true;
    errno = 0;
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            isCopied = copy(from.number(), name.c_str(), {to, name.c_str()}, path / name);
        if (!isCopied)
            break;
        errno = 0;
    }
    --m_depth;
    return isCopied && errno == 0;
}

bool ItemCopy::copyLink(int folder, const char* name, const Target& target, const struct stat& item)
{
    std::array<char, PATH_MAX + 1> text{};
    const ssize_t length = ::readlinkat(folder, name, text.data(), PATH_MAX);
    if (length < 0)
        return false;
    text.at(static_cast<std::size_t>(length)) = '\0';
    if (::symlinkat(text.data(), target.folder, target.name) < 0)
        return false;
    const std::array<timespec, 2> times{item.st_atim, item.st_mtim};
    return isSetOrUnknown(
        ::utimensat(target.folder, target.name, times.data(), AT_SYMLINK_NOFOLLOW));
}

/// A name that nobody has, for the time of copying.
FilePath besides(const FilePath& path)
{
    std::random_device random;
    return path.parent_path()
           / (".tessel-copy-" + std::to_string(random()) + "-" + std::to_string(::getpid()));
}

/// Removes what a failed copy has left, folders without permissions included.
void removeCopy(const FilePath& path)
{
    using namespace std::filesystem;
    std::error_code error;
    if (is_directory(symlink_status(path, error))) {
        permissions(path, perms::owner_all, perm_options::add, error);
        for (recursive_directory_iterator entry(path, error);
             !error && entry != recursive_directory_iterator(); entry.increment(error)) {
            std::error_code ignored;
            if (is_directory(entry->symlink_status(ignored)))
                permissions(entry->path(), perms::owner_all, perm_options::add, ignored);
        }
    }
    remove_all(path, error);
}

/// Renames, but never over anything. Where the file system cannot promise that, it is looked at
/// beforehand.
bool renameToNew(const FilePath& from, const FilePath& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    struct stat item = {};
    if (::lstat(to.c_str(), &item) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.c_str(), to.c_str()) == 0;
}

/// Whether `path` lies in the folder, by whatever way.
bool isInside(const FilePath& path, const FilePath& folder)
{
    std::error_code error;
    FilePath above = std::filesystem::weakly_canonical(path, error);
    while (above.has_relative_path()) {
        above = above.parent_path();
        if (std::filesystem::equivalent(above, folder, error))
            return true;
    }
    return false;
}

tl::unexpected<Failure> cannotCopy(const FilePath& from, const FilePath& to, const QString& why)
{
    return failure(
        QCoreApplication::translate("Failures", "The item “%1” could not be copied to “%2”: %3.")
            .arg(QString::fromStdString(from.string()), QString::fromStdString(to.string()), why)
            .toStdString());
}

} // namespace

Result<void> copyItem(const FilePath& from, const FilePath& to, const CopyObserver& observer)
{
    struct stat item = {};
    if (::lstat(to.c_str(), &item) == 0)
        return cannotCopy(
            from, to,
            QCoreApplication::translate("Failures", "An item of that name exists already"));
    if (::lstat(from.c_str(), &item) == 0 && S_ISDIR(item.st_mode) && isInside(to, from))
        return cannotCopy(
            from, to,
            QCoreApplication::translate("Failures", "A folder cannot be copied into itself"));

    const FilePath temporary = besides(to);
    ItemCopy copy(observer);
    if (!copy.copy(AT_FDCWD, from.c_str(), {AT_FDCWD, temporary.c_str()}, from)) {
        removeCopy(temporary);
        const bool isBelow = copy.failedAt != from;
        const FilePath target = isBelow ? to / copy.failedAt.lexically_relative(from) : to;
        return cannotCopy(copy.failedAt, target, QString::fromStdString(copy.error.message()));
    }
    if (!renameToNew(temporary, to)) {
        const std::error_code error(errno, std::generic_category());
        removeCopy(temporary);
        return cannotCopy(from, to, QString::fromStdString(error.message()));
    }
    return {};
}
