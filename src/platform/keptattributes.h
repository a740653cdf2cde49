// SPDX-License-Identifier: MIT
#pragma once

struct stat;

/// Gives a copy, an open file or folder, the owner, the extended attributes, the access lists, the
/// permissions and the times of what it was copied from. A file system that cannot hold them is no
/// failure: the copy is whole without them. False, with errno set, for anything else.
bool keepAttributes(int from, int to, const struct stat& item);

/// Whether something was set, or cannot be on this file system.
bool isSetOrUnknown(int result);
