// SPDX-License-Identifier: MIT
#include "platform/itemcopy.h"

#include "platform/bytecopy.h"
#include "platform/filedescriptor.h"
#include "platform/keptattributes.h"
#include "platform/temporaryitem.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace {

/// Each level takes open files of the process, and no log store is a tenth as deep.
constexpr int deepest = 200;
/// The value of errno for a folder below that.
constexpr int tooDeep = -1;
/// Failures described one by one; the rest are counted.
constexpr std::size_t mostDescribed = 100;

constexpr int asFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr int asFile = O_RDONLY | O_NONBLOCK | O_CLOEXEC;

QString reason(int error)
{
    if (error == tooDeep)
        return QCoreApplication::translate("Failures", "It is nested too deeply");
    return QString::fromStdString(std::generic_category().message(error));
}

Failure notCopied(const FilePath& from, const FilePath& to, const QString& why)
{
    const QString sentence =
        QCoreApplication::translate("Failures", "The item “%1” could not be copied to “%2”: %3.");
    return {sentence.arg(shownPath(from), shownPath(to), why).toStdString()};
}

/// A name in an open folder.
struct Entry
{
    int folder;
    const char* name;
};

/// An item to be made under a name in an open folder. Has the functions of a TemporaryItem.
class NewEntry
{
public:
    NewEntry(int folder, const char* name) : m_entry{folder, name} {}

    FileDescriptor makeFile(mode_t mode) const
    {
        return FileDescriptor(
            ::openat(m_entry.folder, m_entry.name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    }
    FileDescriptor makeFolder() const
    {
        return FileDescriptor(::mkdirat(m_entry.folder, m_entry.name, 0700) == 0
                                  ? ::openat(m_entry.folder, m_entry.name, asFolder | O_NOFOLLOW)
                                  : -1);
    }
    bool makeLink(const char* text, const std::array<timespec, 2>& times) const
    {
        return ::symlinkat(text, m_entry.folder, m_entry.name) == 0
               && isSetOrUnknown(
                   ::utimensat(m_entry.folder, m_entry.name, times.data(), AT_SYMLINK_NOFOLLOW));
    }
    /// Removes what there is of a file.
    void giveUp() const { ::unlinkat(m_entry.folder, m_entry.name, 0); }

private:
    Entry m_entry;
};

/// Copies one item and all below it. Works from open folders, so that no renaming elsewhere in the
/// tree can lead it astray. Functions that return false set errno.
class ItemCopy
{
public:
    ItemCopy(const FilePath& from, const FilePath& to, CopiedTop top, const CopyObserver& observer)
        : m_from(from)
        , m_to(to)
        , m_top(top)
        , m_observer(observer)
    {
    }

    std::vector<Failure> run();

private:
    template <typename Target>
    bool copy(const Entry& from, Target& to, const FilePath& path);
    template <typename Target>
    bool copyFile(const Entry& from, Target& to);
    template <typename Target>
    bool copyFolder(const Entry& from, Target& to, const FilePath& path);
    template <typename Target>
    bool copyLink(const Entry& from, Target& to, const struct stat& item);
    bool copyEntries(const FileDescriptor& from, int to, const FilePath& path);
    bool copyEntry(const Entry& from, const NewEntry& to, const FilePath& path);
    void leaveOut(const FilePath& path, int error);
    /// The flag for openat() and fstatat() that keeps them from following a link.
    int unlessFollowed(int flag) const { return isTop() && m_top != CopiedTop::AsItIs ? 0 : flag; }
    bool isTop() const { return m_depth == 0; }
    /// The observer may run events, and those may change errno: only called after a success.
    void count(const CopyProgress& progress);

    const FilePath& m_from;
    const FilePath& m_to;
    CopiedTop m_top;
    const CopyObserver& m_observer;
    CopyProgress m_progress;
    int m_depth = 0;
    bool m_isStopped = false;
    std::vector<Failure> m_failures;
    int m_notDescribed = 0;
};

void ItemCopy::count(const CopyProgress& progress)
{
    m_progress.items += progress.items;
    m_progress.bytes += progress.bytes;
    if (m_observer)
        m_observer(m_progress);
}

template <typename Target>
bool ItemCopy::copy(const Entry& from, Target& to, const FilePath& path)
{
    struct stat item = {};
    if (::fstatat(from.folder, from.name, &item, unlessFollowed(AT_SYMLINK_NOFOLLOW)) < 0)
        return false;
    switch (item.st_mode & S_IFMT) {
    case S_IFREG: return copyFile(from, to);
    case S_IFDIR: return copyFolder(from, to, path);
    case S_IFLNK: return copyLink(from, to, item);
    default: errno = EOPNOTSUPP; return false; // a pipe, a socket or a device
    }
}

template <typename Target>
bool ItemCopy::copyFile(const Entry& from, Target& to)
{
    const FileDescriptor original(
        ::openat(from.folder, from.name, asFile | unlessFollowed(O_NOFOLLOW)));
    struct stat item = {};
    if (!original.isOpen() || ::fstat(original.number(), &item) < 0)
        return false;
    FileDescriptor made = to.makeFile(0600);
    return made.isOpen()
           && copyBytes(original.number(), made.number(), item.st_size,
                        [this](std::uint64_t bytes) {
                            count({0, bytes});
                        })
           && keepAttributes(original.number(), made.number(), item) && made.close();
}

template <typename Target>
bool ItemCopy::copyFolder(const Entry& from, Target& to, const FilePath& path)
{
    if (m_depth >= deepest) {
        errno = tooDeep;
        return false;
    }
    const FileDescriptor original(
        ::openat(from.folder, from.name, asFolder | unlessFollowed(O_NOFOLLOW)));
    struct stat item = {};
    if (!original.isOpen() || ::fstat(original.number(), &item) < 0)
        return false;
    const FileDescriptor made = to.makeFolder();
    return made.isOpen() && copyEntries(original, made.number(), path)
           && ((isTop() && m_top == CopiedTop::ToBeFilled)
               || keepAttributes(original.number(), made.number(), item));
}

bool ItemCopy::copyEntries(const FileDescriptor& from, int to, const FilePath& path)
{
    const OpenFolder folder(::fdopendir(::fcntl(from.number(), F_DUPFD_CLOEXEC, 0)));
    if (!folder)
        return false;
    ++m_depth;
    bool isGoingOn = true;
    errno = 0;
    while (const dirent* entry = isGoingOn ? ::readdir(folder.get()) : nullptr) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            isGoingOn = copyEntry({from.number(), name.c_str()}, {to, name.c_str()}, path / name);
        errno = 0;
    }
    --m_depth;
    return isGoingOn && errno == 0;
}

template <typename Target>
bool ItemCopy::copyLink(const Entry& from, Target& to, const struct stat& item)
{
    std::array<char, PATH_MAX + 1> text{};
    const ssize_t length = ::readlinkat(from.folder, from.name, text.data(), PATH_MAX);
    if (length < 0)
        return false;
    text.at(static_cast<std::size_t>(length)) = '\0';
    return to.makeLink(text.data(), {item.st_atim, item.st_mtim});
}

/// Copies an item in a folder, or leaves it out. Returns false when copying cannot go on.
bool ItemCopy::copyEntry(const Entry& from, const NewEntry& to, const FilePath& path)
{
    if (copy(from, to, path)) {
        count({1, 0});
        return true;
    }
    if (m_isStopped)
        return false;
    const int error = errno;
    struct stat item = {};
    if (error == ENOENT && ::fstatat(from.folder, from.name, &item, AT_SYMLINK_NOFOLLOW) < 0)
        return true;     // deleted meanwhile
    if (error != EEXIST) // then the name is that of another item, where case does not matter
        to.giveUp();
    m_isStopped = error == ENOSPC || error == EDQUOT || error == EROFS;
    leaveOut(path, error);
    return !m_isStopped;
}

void ItemCopy::leaveOut(const FilePath& path, int error)
{
    if (m_isStopped)
        m_failures.clear(); // nothing is left in which they could be missing
    if (m_failures.size() == mostDescribed)
        ++m_notDescribed;
    else
        m_failures.push_back(
            notCopied(path, m_to / path.lexically_relative(m_from), reason(error)));
}

std::vector<Failure> ItemCopy::run()
{
    TemporaryItem made(m_to);
    if (!copy({AT_FDCWD, m_from.c_str()}, made, m_from)) {
        if (m_isStopped)
            return m_failures;
        return {notCopied(m_from, m_to, reason(errno))};
    }
    if (!made.moveToFreePlace())
        return {notCopied(m_from, m_to, reason(errno))};
    count({1, 0});
    if (m_notDescribed > 0) {
        const QString rest = QCoreApplication::translate(
            "Failures", "%n more items could not be copied.", nullptr, m_notDescribed);
        m_failures.push_back({rest.toStdString()});
    }
    return m_failures;
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

} // namespace

std::vector<Failure>
copyItem(const FilePath& from, const FilePath& to, CopiedTop top, const CopyObserver& observer)
{
    struct stat item = {};
    if (::lstat(to.c_str(), &item) == 0)
        return {notCopied(
            from, to,
            QCoreApplication::translate("Failures", "An item of that name exists already"))};
    const int flags = top == CopiedTop::AsItIs ? AT_SYMLINK_NOFOLLOW : 0;
    if (::fstatat(AT_FDCWD, from.c_str(), &item, flags) == 0 && S_ISDIR(item.st_mode)) {
        if (isInside(to, from))
            return {notCopied(
                from, to,
                QCoreApplication::translate("Failures", "A folder cannot be copied into itself"))};
        removeAbandonedItems(to.parent_path());
    }
    return ItemCopy(from, to, top, observer).run();
}
