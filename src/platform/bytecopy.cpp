// SPDX-License-Identifier: MIT
#include "platform/bytecopy.h"

#include <cerrno>
#include <linux/fs.h>
#include <memory>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using Observer = std::function<void(std::uint64_t)>;

/// The kernel's own copy where it has one for these file systems. When it is unable, nothing was
/// written.
enum class KernelCopy { Done, Failed, Unable };

KernelCopy copyInKernel(int from, int to, const Observer& observer)
{
    constexpr std::size_t slice = std::size_t{1} << 26U; // well under a second
    bool hasCopied = false;
    for (;;) {
        const ssize_t count = ::copy_file_range(from, nullptr, to, nullptr, slice, 0);
        if (count > 0) {
            hasCopied = true;
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
}

bool copyByHand(int from, int to, const Observer& observer)
{
    constexpr std::size_t bufferSize = std::size_t{1} << 18U;
    const auto buffer = std::make_unique<char[]>(bufferSize);
    for (;;) {
        const ssize_t count = ::read(from, buffer.get(), bufferSize);
        if (count == 0)
            return true;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !writeBytes(to, buffer.get(), count))
            return false;
        observer(static_cast<std::uint64_t>(count));
    }
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
    const KernelCopy result = copyInKernel(from, to, observer);
    return result == KernelCopy::Unable ? copyByHand(from, to, observer)
                                        : result == KernelCopy::Done;
}
