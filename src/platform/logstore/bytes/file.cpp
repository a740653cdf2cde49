// SPDX-License-Identifier: MIT
#include "platform/logstore/bytes/file.h"

#include "platform/base/utf8.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace logstore {

StoreResult<File> File::open(const std::filesystem::path& path)
{
    // Without O_NONBLOCK, opening a pipe that is named like a trace file would block.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return storeProblem(ProblemKind::UnreadableFile, path, errno);
    struct stat status
    {
    };
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return storeProblem(ProblemKind::UnreadableFile, path);
    }
    return File(descriptor, static_cast<std::uint64_t>(status.st_size));
}

File::File(File&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_size(other.m_size)
{
}

File& File::operator=(File&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_size, other.m_size);
    return *this;
}

File::~File()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::size_t File::readAt(std::uint64_t offset, std::span<std::uint8_t> into) const
{
    std::size_t done = 0;
    while (done < into.size()) {
        const ssize_t count = ::pread(m_descriptor, into.data() + done, into.size() - done,
                                      static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::uint64_t File::nextData(std::uint64_t offset) const
{
    const off_t found = ::lseek(m_descriptor, static_cast<off_t>(offset), SEEK_DATA);
    if (found >= 0)
        return static_cast<std::uint64_t>(found);
    return errno == ENXIO ? m_size : offset; // not all file systems know their holes
}

std::vector<std::uint8_t> File::bytesAt(std::uint64_t offset, std::uint64_t size) const
{
    if (offset >= m_size)
        return {};
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::min(size, m_size - offset)));
    bytes.resize(readAt(offset, bytes));
    return bytes;
}

std::string File::textAt(std::uint64_t offset, std::uint64_t limit) const
{
    std::string text;
    for (std::uint64_t wanted = 512;; wanted *= 8) {
        const auto bytes = bytesAt(offset, std::min(wanted, limit));
        const std::string_view found = cString(bytes);
        if (found.size() < bytes.size() || bytes.size() < wanted || wanted >= limit) {
            appendUtf8(text, found);
            return text;
        }
    }
}

} // namespace logstore
