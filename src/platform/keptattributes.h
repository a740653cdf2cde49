// SPDX-License-Identifier: MIT
#pragma once

struct stat;

/// Gives an open file or folder the owner, the group, the extended attributes, the access lists and
/// the permissions of another. A group that cannot be kept is allowed no more than everyone is.
/// What the file system cannot hold is no failure. Returns false, with errno set, for anything
/// else.
bool keepAccess(int from, int to, const struct stat& item);

/// As above, with the times.
bool keepAttributes(int from, int to, const struct stat& item);

/// Whether something was set, or cannot be on this file system.
bool isSetOrUnknown(int result);
