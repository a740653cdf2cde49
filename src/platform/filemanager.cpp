// SPDX-License-Identifier: MIT
#include "platform/filemanager.h"

#include "platform/filedescriptor.h"
#include "platform/filereplacement.h"
#include "platform/itemcopy.h"
#include "platform/keptattributes.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace {

/// Files are read whole: what is larger than this is no text that the tools could read.
constexpr off_t largestFile = off_t{2} * 1024 * 1024 * 1024;

constexpr const char* notListed =
    QT_TRANSLATE_NOOP("Failures", "The folder “%1” could not be listed: %2.");
constexpr const char* notRead =
    QT_TRANSLATE_NOOP("Failures", "The file “%1” could not be read: %2.");

tl::unexpected<Failure>
cannot(const char* sentence, const FilePath& path, const std::error_code& why)
{
    return failure(
        QCoreApplication::translate("Failures", sentence)
            .arg(QString::fromStdString(path.string()), QString::fromStdString(why.message()))
            .toStdString());
}

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

FileTime time(const struct statx_timestamp& stamp)
{
    using namespace std::chrono;
    // A day off, so that they are years of four digits in every zone.
    constexpr sys_seconds first = sys_days(year(1) / 1 / 2);
    constexpr sys_seconds last = sys_days(year(9999) / 12 / 31);
    const sys_seconds second(seconds(stamp.tv_sec));
    return std::clamp(second, first, last) + floor<microseconds>(nanoseconds(stamp.tv_nsec));
}

FileAttributes attributes(const struct statx& item)
{
    const FileTime modified = time(item.stx_mtime);
    const FileTime created = (item.stx_mask & STATX_BTIME) != 0
                                 ? time(item.stx_btime)
                                 : std::min(modified, time(item.stx_ctime));
    return {S_ISREG(item.stx_mode), item.stx_size, created, modified};
}

Result<FileAttributes> attributesIn(int folder, const std::string& name, const FilePath& path)
{
    constexpr unsigned wanted = STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_BTIME;
    struct statx item = {};
    if (::statx(folder, name.c_str(), AT_SYMLINK_NOFOLLOW, wanted, &item) < 0)
        return cannot(QT_TRANSLATE_NOOP("Failures", "The item “%1” could not be examined: %2."),
                      path / name, lastError());
    return attributes(item);
}

/// Those that are wanted, in ascending order.
Result<std::vector<std::string>>
namesIn(DIR* open, const FilePath& folder, const NameFilter& isWanted)
{
    if (!open)
        return cannot(notListed, folder, lastError());
    std::vector<std::string> found;
    errno = 0;
    while (const dirent* entry = ::readdir(open)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && isWanted(name))
            found.emplace_back(name);
        errno = 0;
    }
    if (errno != 0)
        return cannot(notListed, folder, lastError());
    std::ranges::sort(found);
    return found;
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

Result<QByteArray> FileManager::textOfFile(const FilePath& path)
{
    auto contents = contentsOfFile(path);
    if (contents && !contents->isValidUtf8())
        return failure(QCoreApplication::translate(
                           "Failures", "The file “%1” could not be read: It is not text in UTF-8.")
                           .arg(QString::fromStdString(path.string()))
                           .toStdString());
    return contents;
}

Result<std::vector<std::string>> SystemFileManager::contentsOfFolder(const FilePath& folder)
{
    const OpenFolder open(::opendir(folder.c_str()));
    return namesIn(open.get(), folder, [](std::string_view) { return true; });
}

Result<std::vector<FolderItem>> SystemFileManager::itemsOfFolder(const FilePath& folder,
                                                                 const NameFilter& isWanted)
{
    const OpenFolder open(::opendir(folder.c_str()));
    auto names = namesIn(open.get(), folder, isWanted);
    if (!names)
        return tl::unexpected(std::move(names.error()));
    std::vector<FolderItem> items;
    items.reserve(names->size());
    for (std::string& name : *names) {
        auto attributes = attributesIn(::dirfd(open.get()), name, folder);
        items.push_back({std::move(name), std::move(attributes)});
    }
    return items;
}

bool SystemFileManager::isFolder(const FilePath& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

bool SystemFileManager::isLink(const FilePath& path)
{
    std::error_code error;
    return std::filesystem::is_symlink(path, error);
}

Result<void> SystemFileManager::createFolder(const FilePath& path)
{
    if (::mkdir(path.c_str(), 0777) < 0)
        return cannot(QT_TRANSLATE_NOOP("Failures", "The folder “%1” could not be created: %2."),
                      path, lastError());
    return {};
}

std::vector<Failure> SystemFileManager::copyItem(const FilePath& from,
                                                 const FilePath& to,
                                                 CopiedTop top,
                                                 const CopyObserver& observer)
{
    return ::copyItem(from, to, top, observer);
}

Result<void> SystemFileManager::finishFolder(const FilePath& from, const FilePath& to)
{
    constexpr int asFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    const FileDescriptor original(::open(from.c_str(), asFolder));
    const FileDescriptor copy(::open(to.c_str(), asFolder | O_NOFOLLOW));
    struct stat item = {};
    if (!original.isOpen() || !copy.isOpen() || ::fstat(original.number(), &item) < 0
        || !keepAttributes(original.number(), copy.number(), item))
        return cannot(QT_TRANSLATE_NOOP("Failures", "The folder “%1” could not be finished: %2."),
                      to, lastError());
    return {};
}

Result<QByteArray> SystemFileManager::contentsOfFile(const FilePath& path)
{
    // Not blocking, so that a pipe that nobody writes into does not stop the program.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat item = {};
    if (!file.isOpen() || ::fstat(file.number(), &item) < 0)
        return cannot(notRead, path, lastError());
    if (!S_ISREG(item.st_mode)) {
        const auto why =
            S_ISDIR(item.st_mode) ? std::errc::is_a_directory : std::errc::operation_not_supported;
        return cannot(notRead, path, std::make_error_code(why));
    }
    if (item.st_size > largestFile)
        return cannot(notRead, path, std::make_error_code(std::errc::file_too_large));
    QByteArray contents(item.st_size + 1, Qt::Uninitialized); // one more, to find the end at once
    if (!readAll(file.number(), contents))
        return cannot(notRead, path, lastError());
    return contents;
}

Result<void> SystemFileManager::writeFile(const FilePath& path, const QByteArray& contents)
{
    return replaceFile(path, contents);
}
