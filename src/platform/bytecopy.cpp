// SPDX-License-Identifier: MIT
#include "platform/bytecopy.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <linux/fs.h>
#include <memory>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using Observer = std::function<void(std::uint64_t)>;

constexpr off_t toTheEnd = std::numeric_limits<off_t>::max();

/// The kernel's own copy where it has one for these file systems. When it is unable, nothing was
/// written.
enum class KernelCopy { Done, Failed, Unable };

// The functions below copy up to `length` bytes, or to the end of the file, at the positions that
// the two files stand at.

KernelCopy copyInKernel(int from, int to, off_t length, const Observer& observer)
{
    constexpr off_t slice = off_t{1} << 26U; // well under a second
    bool hasCopied = false;
    while (length > 0) {
        const auto wanted = static_cast<std::size_t>(std::min(slice, length));
        const ssize_t count = ::copy_file_range(from, nullptr, to, nullptr, wanted, 0);
        if (count > 0) {
            hasCopied = true;
            length -= count;
            observer(static_cast<std::uint64_t>(count));
        } else if (count == 0) {
            // Of some kernel-made files it copies nothing, whatever they hold.
            return hasCopied ? KernelCopy::Done : KernelCopy::Unable;
        } else if (errno != EINTR) {
            const bool isRefused = errno == EXDEV || errno == EINVAL || errno == ENOSYS
                                   || errno == EOPNOTSUPP || errno == EPERM;
            return isRefused && !hasCopied ? KernelCopy::Unable : KernelCopy::Failed;
        }
    }
    return KernelCopy::Done;
}

bool copyByHand(int from, int to, off_t length, const Observer& observer)
{
    constexpr off_t bufferSize = off_t{1} << 18U;
    const auto buffer = std::make_unique<char[]>(bufferSize);
    while (length > 0) {
        const auto wanted = static_cast<std::size_t>(std::min(bufferSize, length));
        const ssize_t count = ::read(from, buffer.get(), wanted);
        if (count == 0)
            break;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !writeBytes(to, buffer.get(), count))
            return false;
        length -= count;
        observer(static_cast<std::uint64_t>(count));
    }
    return true;
}

bool copyPart(int from, int to, off_t length, const Observer& observer)
{
    const KernelCopy result = copyInKernel(from, to, length, observer);
    return result == KernelCopy::Unable ? copyByHand(from, to, length, observer)
                                        : result == KernelCopy::Done;
}

/// Whether the file has holes.
bool isSparse(int file, off_t size)
{
    const off_t hole = ::lseek(file, 0, SEEK_HOLE);
    return ::lseek(file, 0, SEEK_SET) == 0 && hole >= 0 && hole < size;
}

/// Copies the parts between the holes, up to the given length.
bool copySparse(int from, int to, off_t size, const Observer& observer)
{
    for (off_t position = 0; position < size;) {
        off_t data = ::lseek(from, position, SEEK_DATA);
        if (data < 0 && errno != ENXIO) // which says that the rest is a hole
            return false;
        data = data < 0 ? size : std::min(data, size);
        observer(static_cast<std::uint64_t>(data - position));
        const off_t hole = data < size ? ::lseek(from, data, SEEK_HOLE) : size;
        const off_t end =
            hole < 0 ? size : std::min(hole, size); // the file may have been cut short
        if (::lseek(from, data, SEEK_SET) < 0 || ::lseek(to, data, SEEK_SET) < 0
            || !copyPart(from, to, end - data, observer))
            return false;
        position = end;
    }
    return ::ftruncate(to, size) == 0;
}

} // namespace

bool writeBytes(int file, const char* bytes, std::int64_t size)
{
    while (size > 0) {
        const ssize_t count = ::write(file, bytes, static_cast<std::size_t>(size));
        if (count == 0)
            errno = EIO; // no file system should do this; trying again might never end
        else if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes += count;
        size -= count;
    }
    return true;
}

bool copyBytes(int from, int to, off_t size, const Observer& observer)
{
    // Both files share the data where the file system can do that.
    if (::ioctl(to, FICLONE, from) == 0) {
        observer(static_cast<std::uint64_t>(size));
        return true;
    }
    return isSparse(from, size) ? copySparse(from, to, size, observer)
                                : copyPart(from, to, toTheEnd, observer);
}
