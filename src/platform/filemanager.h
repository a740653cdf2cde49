// SPDX-License-Identifier: MIT
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

/// A path as the file system has it, in bytes: names need not be UTF-8, and a QString would lose
/// those that are not.
using FilePath = std::filesystem::path;

using FileTime = std::chrono::sys_time<std::chrono::nanoseconds>;

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
};

/// The operations on files and folders that can fail, whole items at a time. Failures name the file
/// and the reason.
class FileManager
{
public:
    virtual ~FileManager() = default;

    /// The names in a folder, hidden ones included, in ascending order.
    virtual Result<std::vector<std::string>> contentsOfFolder(const FilePath& folder) = 0;
    /// Links are not followed.
    virtual Result<FileAttributes> attributesOfItem(const FilePath& path) = 0;
    /// Whether there is a folder at the path; links are followed.
    virtual bool isFolder(const FilePath& path) = 0;
    virtual Result<void> createFolder(const FilePath& path) = 0;
    /// Copies a file, a link, or a folder with all it holds. Never overwrites, and leaves nothing
    /// at `to` when it fails.
    virtual Result<void> copyItem(const FilePath& from, const FilePath& to) = 0;
    virtual Result<QByteArray> contentsOfFile(const FilePath& path) = 0;
    /// Writes the file in place, over what it held.
    virtual Result<void> writeFile(const FilePath& path, const QByteArray& contents) = 0;
};

class SystemFileManager final : public FileManager
{
public:
    Result<std::vector<std::string>> contentsOfFolder(const FilePath& folder) override;
    Result<FileAttributes> attributesOfItem(const FilePath& path) override;
    bool isFolder(const FilePath& path) override;
    Result<void> createFolder(const FilePath& path) override;
    Result<void> copyItem(const FilePath& from, const FilePath& to) override;
    Result<QByteArray> contentsOfFile(const FilePath& path) override;
    Result<void> writeFile(const FilePath& path, const QByteArray& contents) override;
};
