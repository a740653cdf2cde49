// SPDX-License-Identifier: MIT
#pragma once

#include "platform/filedescriptor.h"

#include <array>
#include <ctime>
#include <filesystem>
#include <functional>
#include <sys/types.h>

/// A file, link or folder in the making, under a hidden name beside the place it is made for. It is
/// removed at the end unless it was moved to its place. The functions return false, with errno set,
/// when they fail.
///
/// A lock marks a file or folder as owned by this process. The system releases it when the process
/// ends in whatever way.
class TemporaryItem
{
public:
    explicit TemporaryItem(const std::filesystem::path& place);
    TemporaryItem(const TemporaryItem&) = delete;
    TemporaryItem& operator=(const TemporaryItem&) = delete;
    ~TemporaryItem();

    /// Makes an empty file or folder. The descriptor is open for writing or for use with openat().
    FileDescriptor makeFile(mode_t mode);
    FileDescriptor makeFolder();
    bool makeLink(const char* text, const std::array<timespec, 2>& times);

    /// Moves the item to its place, over a file or link that is there.
    bool replace();
    /// Moves the item to its place. Fails when there is anything. Where the file system cannot
    /// promise that, it is looked up beforehand.
    bool moveToFreePlace();

private:
    FileDescriptor make(const std::function<int(const char*)>& open);
    bool own(const FileDescriptor& item);
    void chooseName();

    std::filesystem::path m_place;
    std::filesystem::path m_path;
    FileDescriptor m_owned;
    bool m_isMade = false;
};

/// Removes the temporary items in a folder that no running process owns: what a killed process or
/// a loss of power has left. An empty path means the current folder.
void removeAbandonedItems(const std::filesystem::path& folder);
