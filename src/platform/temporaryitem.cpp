// SPDX-License-Identifier: MIT
#include "platform/temporaryitem.h"

#include "platform/keptattributes.h"

#include <fcntl.h>
#include <random>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view namePrefix = ".tessel-copy-";

bool isTemporaryName(std::string_view name)
{
    return name.starts_with(namePrefix)
           && name.find_first_not_of("0123456789-", namePrefix.size()) == std::string_view::npos;
}

/// Removes an item with all it holds, folders without permissions included.
void removeItem(const fs::path& path)
{
    std::error_code error;
    if (fs::is_directory(fs::symlink_status(path, error))) {
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, error);
        for (fs::recursive_directory_iterator entry(path, error);
             !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
            std::error_code ignored;
            if (fs::is_directory(entry->symlink_status(ignored)))
                fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add,
                                ignored);
        }
    }
    fs::remove_all(path, error);
}

/// Where locks are not supported, or the item may not be opened, it counts as owned.
bool isAbandoned(const FileDescriptor& item)
{
    return item.isOpen() && ::flock(item.number(), LOCK_EX | LOCK_NB) == 0;
}

} // namespace

TemporaryItem::TemporaryItem(const fs::path& place) : m_place(place)
{
}

TemporaryItem::~TemporaryItem()
{
    const int before = errno;
    if (m_isMade)
        removeItem(m_path);
    errno = before;
}

void TemporaryItem::chooseName()
{
    std::random_device random;
    m_path = m_place.parent_path() / (std::string(namePrefix) + std::to_string(random()));
}

FileDescriptor TemporaryItem::makeFile(mode_t mode)
{
    return make([mode](const char* path) {
        return ::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    });
}

FileDescriptor TemporaryItem::makeFolder()
{
    return make([](const char* path) {
        const bool isMade = ::mkdir(path, 0700) == 0;
        return isMade ? ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC) : -1;
    });
}

/// Tries again under another name when the name is in use, or when another process has taken the
/// new item for an abandoned one before its lock was set.
FileDescriptor TemporaryItem::make(const std::function<int(const char*)>& open)
{
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        chooseName();
        FileDescriptor item(open(m_path.c_str()));
        m_isMade = item.isOpen();
        if (m_isMade && own(item))
            return item;
        m_isMade = false;
        if (!item.isOpen() && errno != EEXIST)
            break;
    }
    return FileDescriptor();
}

bool TemporaryItem::makeLink(const char* text, const std::array<timespec, 2>& times)
{
    chooseName();
    m_isMade = ::symlink(text, m_path.c_str()) == 0;
    return m_isMade
           && isSetOrUnknown(
               ::utimensat(AT_FDCWD, m_path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW));
}

/// Returns false when the item belongs to a process that is about to remove it.
bool TemporaryItem::own(const FileDescriptor& item)
{
    if (::flock(item.number(), LOCK_EX | LOCK_NB) < 0 && errno == EWOULDBLOCK)
        return false;
    struct stat status = {};
    if (::fstat(item.number(), &status) == 0 && status.st_nlink == 0)
        return false;
    m_owned = FileDescriptor(::fcntl(item.number(), F_DUPFD_CLOEXEC, 0));
    return true;
}

bool TemporaryItem::replace()
{
    if (::rename(m_path.c_str(), m_place.c_str()) < 0)
        return false;
    m_isMade = false;
    return true;
}

bool TemporaryItem::moveToFreePlace()
{
    if (::renameat2(AT_FDCWD, m_path.c_str(), AT_FDCWD, m_place.c_str(), RENAME_NOREPLACE) == 0) {
        m_isMade = false;
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    struct stat item = {};
    if (::lstat(m_place.c_str(), &item) == 0) {
        errno = EEXIST;
        return false;
    }
    return replace();
}

void removeAbandonedItems(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error);
         !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (!isTemporaryName(entry->path().filename().native()))
            continue;
        const FileDescriptor item(
            ::open(entry->path().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (isAbandoned(item))
            removeItem(entry->path());
    }
}
