// SPDX-License-Identifier: MIT
#include "support/systemfault.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::optional<SystemFault::Fault> fault;

bool isWrittenFile(int file)
{
    struct stat item = {};
    return ::fstat(file, &item) == 0 && S_ISREG(item.st_mode)
           && (::fcntl(file, F_GETFL) & O_ACCMODE) != O_RDONLY;
}

/// Whether this call fails; errno says why.
bool fails(SystemCall call)
{
    if (!fault || fault->call != call || fault->error == 0 || fault->times == 0)
        return false;
    --fault->times;
    if (fault->error < 0)
        ::raise(SIGKILL);
    errno = fault->error;
    return true;
}

/// How much of it is written; nothing if writing fails.
std::optional<std::size_t> accepted(int file, std::size_t wanted)
{
    if (!fault || fault->call != SystemCall::Write || !isWrittenFile(file))
        return wanted;
    if (wanted > 0 && fault->accepted == 0 && fails(SystemCall::Write))
        return std::nullopt;
    auto part = std::min<std::int64_t>(static_cast<std::int64_t>(wanted), fault->mostAtOnce);
    if (fault->accepted > 0) {
        part = std::min(part, fault->accepted);
        fault->accepted -= part;
    }
    return static_cast<std::size_t>(part);
}

} // namespace

SystemFault::SystemFault(const Fault& wanted)
{
    fault = wanted;
}

SystemFault::~SystemFault()
{
    fault.reset();
}

extern "C" {

ssize_t write(int file, const void* bytes, std::size_t size)
{
    const auto part = accepted(file, size);
    return part ? ::syscall(SYS_write, file, bytes, *part) : -1;
}

ssize_t
copy_file_range(int from, off_t* fromAt, int to, off_t* toAt, std::size_t size, unsigned flags)
{
    const auto part = accepted(to, size);
    return part ? ::syscall(SYS_copy_file_range, from, fromAt, to, toAt, *part, flags) : -1;
}

int fsync(int file)
{
    if (fault && isWrittenFile(file) && fails(SystemCall::Synchronise))
        return -1;
    return static_cast<int>(::syscall(SYS_fsync, file));
}

int close(int file)
{
    const int before = errno;
    const bool isFailing = fault && isWrittenFile(file) && fails(SystemCall::Close);
    const int why = isFailing ? errno : before;
    const int result = static_cast<int>(::syscall(SYS_close, file));
    if (isFailing || result == 0)
        errno = why;
    return isFailing ? -1 : result;
}

int rename(const char* from, const char* to)
{
    return fails(SystemCall::Rename) ? -1 : static_cast<int>(::syscall(SYS_rename, from, to));
}

} // extern "C"
