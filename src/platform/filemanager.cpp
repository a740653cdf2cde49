// SPDX-License-Identifier: MIT
#include "platform/filemanager.h"

#include "platform/filedescriptor.h"
#include "platform/itemcopy.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace {

/// Files are read whole: what is larger than this is no text that the tools could read.
constexpr off_t largestFile = off_t{2} * 1024 * 1024 * 1024;

tl::unexpected<Failure>
cannot(const char* kind, const FilePath& path, const char* what, const std::error_code& why)
{
    return failure(std::string("The ") + kind + " “" + path.string() + "” could not be " + what
                   + ": " + why.message() + ".");
}

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

FileTime time(const struct statx_timestamp& stamp)
{
    return FileTime(std::chrono::seconds(stamp.tv_sec) + std::chrono::nanoseconds(stamp.tv_nsec));
}

/// Reads to the end, whatever the size was when the file was opened.
bool readAll(int file, QByteArray& contents)
{
    qsizetype length = 0;
    for (;;) {
        if (length == contents.size())
            contents.resize(length + std::max<qsizetype>(length / 4, 4096));
        const ssize_t count = ::read(file, contents.data() + length,
                                     static_cast<std::size_t>(contents.size() - length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            contents.resize(length);
            return count == 0;
        }
        length += count;
    }
}

} // namespace

FilePath filePath(const QUrl& location)
{
    // Through the encoded form, which keeps bytes that are not UTF-8.
    QByteArray bytes = QByteArray::fromPercentEncoding(location.path(QUrl::FullyEncoded).toUtf8());
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return {bytes.toStdString()};
}

QString shownPath(const FilePath& path)
{
    return QString::fromStdString(path.native());
}

Result<std::vector<std::string>> SystemFileManager::contentsOfFolder(const FilePath& folder)
{
    std::error_code error;
    std::vector<std::string> names;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        names.push_back(entry->path().filename().native());
    if (error)
        return cannot("folder", folder, "listed", error);
    std::ranges::sort(names);
    return names;
}

Result<FileAttributes> SystemFileManager::attributesOfItem(const FilePath& path)
{
    struct statx item = {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &item)
        < 0)
        return cannot("item", path, "examined", lastError());
    const FileTime modified = time(item.stx_mtime);
    const FileTime created = (item.stx_mask & STATX_BTIME) != 0
                                 ? time(item.stx_btime)
                                 : std::min(modified, time(item.stx_ctime));
    return FileAttributes{S_ISREG(item.stx_mode), item.stx_size, created, modified};
}

bool SystemFileManager::isFolder(const FilePath& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

Result<void> SystemFileManager::createFolder(const FilePath& path)
{
    if (::mkdir(path.c_str(), 0777) < 0)
        return cannot("folder", path, "created", lastError());
    return {};
}

Result<void> SystemFileManager::copyItem(const FilePath& from, const FilePath& to)
{
    return ::copyItem(from, to);
}

Result<QByteArray> SystemFileManager::contentsOfFile(const FilePath& path)
{
    // Not blocking, so that a pipe that nobody writes into does not stop the program.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat item = {};
    if (!file.isOpen() || ::fstat(file.number(), &item) < 0)
        return cannot("file", path, "read", lastError());
    if (!S_ISREG(item.st_mode)) {
        const auto why =
            S_ISDIR(item.st_mode) ? std::errc::is_a_directory : std::errc::operation_not_supported;
        return cannot("file", path, "read", std::make_error_code(why));
    }
    if (item.st_size > largestFile)
        return cannot("file", path, "read", std::make_error_code(std::errc::file_too_large));
    QByteArray contents(item.st_size + 1, Qt::Uninitialized); // one more, to find the end at once
    if (!readAll(file.number(), contents))
        return cannot("file", path, "read", lastError());
    return contents;
}

Result<void> SystemFileManager::writeFile(const FilePath& path, const QByteArray& contents)
{
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!file.isOpen() || !writeBytes(file.number(), contents.constData(), contents.size())
        || !file.close())
        return cannot("file", path, "written", lastError());
    return {};
}
