// SPDX-License-Identifier: MIT
#include "platform/keptattributes.h"

#include <array>
#include <cerrno>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr mode_t permissionBits = 07777;

/// The attributes of users, and the access lists. Others are the system's own.
bool isKept(std::string_view name)
{
    return name.starts_with("user.") || name.starts_with("system.posix_acl_");
}

void keepExtendedAttribute(int from, int to, const char* name)
{
    const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
    if (size < 0)
        return;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t length = ::fgetxattr(from, name, value.data(), value.size());
    if (length >= 0)
        ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(length), 0);
}

void keepExtendedAttributes(int from, int to)
{
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size <= 0)
        return;
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t length = ::flistxattr(from, names.data(), names.size());
    // Each name ends with a null character.
    for (ssize_t at = 0; at < length;) {
        const std::string_view name(names.data() + at);
        if (isKept(name))
            keepExtendedAttribute(from, to, name.data());
        at += static_cast<ssize_t>(name.size()) + 1;
    }
}

} // namespace

bool isSetOrUnknown(int result)
{
    return result == 0 || errno == EPERM || errno == EOPNOTSUPP;
}

bool keepAccess(int from, int to, const struct stat& item)
{
    mode_t mode = item.st_mode & permissionBits;
    // Only the super-user may give files away, others at most to a group of theirs.
    if (::fchown(to, item.st_uid, item.st_gid) < 0) {
        mode &= ~mode_t{S_ISUID | S_ISGID}; // it would run as another
        if (::fchown(to, static_cast<uid_t>(-1), item.st_gid) < 0)
            mode &= ~mode_t{S_IRWXG} | (mode & S_IRWXO) << 3U;
    }
    keepExtendedAttributes(from, to); // while the copy can be written to
    return isSetOrUnknown(::fchmod(to, mode));
}

bool keepAttributes(int from, int to, const struct stat& item)
{
    const std::array<timespec, 2> times{item.st_atim, item.st_mtim};
    return keepAccess(from, to, item) && isSetOrUnknown(::futimens(to, times.data()));
}
