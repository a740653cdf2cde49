// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <dirent.h>
#include <memory>

struct FolderCloser
{
    void operator()(DIR* folder) const
    {
        const int before = errno;
        ::closedir(folder);
        errno = before;
    }
};

/// An open folder of the system, closed at the end. Closing it leaves errno as it was.
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;
