// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <dirent.h>
#include <memory>
#include <unistd.h>
#include <utility>

/// An open file of the system, closed at the end. That leaves errno as it was.
class FileDescriptor
{
public:
    explicit FileDescriptor(int number = -1) : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileDescriptor()
    {
        const int before = errno;
        close();
        errno = before;
    }

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    /// Some file systems say only here that the last bytes found no room.
    bool close() { return m_number < 0 || ::close(std::exchange(m_number, -1)) == 0; }

private:
    int m_number;
};

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
