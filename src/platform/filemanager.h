// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A path as the file system has it, in bytes: names need not be UTF-8, and a QString would lose
/// those that are not.
using FilePath = std::filesystem::path;

/// Times beyond the years 1 to 9999 are cut to these.
using FileTime = std::chrono::sys_time<std::chrono::microseconds>;

/// The path of a local file's location, without a trailing separator.
FilePath filePath(const QUrl& location);

/// The path, or a name, for people.
QString shownPath(const FilePath& path);

struct FileAttributes
{
    bool isRegularFile = false;
    std::uint64_t size = 0;
    FileTime created; ///< where the file system does not know, the earliest of its other times
    FileTime modified;

    /// A copy is created when it is copied: then the time of modification is the older one.
    FileTime firstWritten() const { return std::min(created, modified); }
};

struct FolderItem
{
    std::string name;
    Result<FileAttributes> attributes; ///< or why the item cannot be examined
};

using NameFilter = std::function<bool(std::string_view)>;

/// How far copying has come.
struct CopyProgress
{
    std::uint64_t items = 0; ///< files, links and folders that are whole
    std::uint64_t bytes = 0;
};

/// Called after each item, and in a large file now and then. May run events.
using CopyObserver = std::function<void(const CopyProgress&)>;

/// What happens to the item itself that is copied; links below it are always copied as links.
enum class CopiedTop {
    AsItIs,
    Followed,   ///< a link is followed
    ToBeFilled, ///< as above; a folder gets its attributes later, from finishFolder()
};

/// The operations on files and folders that can fail, whole items at a time. Failures name the file
/// and the reason.
class FileManager
{
public:
    virtual ~FileManager() = default;

    /// The names in a folder, hidden ones included, in ascending order.
    virtual Result<std::vector<std::string>> contentsOfFolder(const FilePath& folder) = 0;
    /// The items in a folder under the names that are wanted, in ascending order. Links are not
    /// followed.
    virtual Result<std::vector<FolderItem>> itemsOfFolder(const FilePath& folder,
                                                          const NameFilter& isWanted) = 0;
    /// Whether there is a folder at the path; links are followed.
    virtual bool isFolder(const FilePath& path) = 0;
    virtual bool isLink(const FilePath& path) = 0;
    virtual Result<void> createFolder(const FilePath& path) = 0;
    /// Copies a file, a link, or a folder with all it holds, and returns what failed. Never
    /// overwrites. An item in a folder that cannot be read is left out; when the item itself fails,
    /// or the disk is full, nothing is left at `to`.
    virtual std::vector<Failure> copyItem(const FilePath& from,
                                          const FilePath& to,
                                          CopiedTop top,
                                          const CopyObserver& observer) = 0;
    /// Gives a copied folder that has been filled the attributes of its original.
    virtual Result<void> finishFolder(const FilePath& from, const FilePath& to) = 0;
    virtual Result<QByteArray> contentsOfFile(const FilePath& path) = 0;
    /// The contents of a file of text; fails when they are not UTF-8.
    Result<QByteArray> textOfFile(const FilePath& path);
    /// Writes the file; see replaceFile().
    virtual Result<void> writeFile(const FilePath& path, const QByteArray& contents) = 0;
};

class SystemFileManager final : public FileManager
{
public:
    Result<std::vector<std::string>> contentsOfFolder(const FilePath& folder) override;
    Result<std::vector<FolderItem>> itemsOfFolder(const FilePath& folder,
                                                  const NameFilter& isWanted) override;
    bool isFolder(const FilePath& path) override;
    bool isLink(const FilePath& path) override;
    Result<void> createFolder(const FilePath& path) override;
    std::vector<Failure> copyItem(const FilePath& from,
                                  const FilePath& to,
                                  CopiedTop top,
                                  const CopyObserver& observer) override;
    Result<void> finishFolder(const FilePath& from, const FilePath& to) override;
    Result<QByteArray> contentsOfFile(const FilePath& path) override;
    Result<void> writeFile(const FilePath& path, const QByteArray& contents) override;
};
