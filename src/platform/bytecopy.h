// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <sys/types.h>

/// Writes all bytes to an open file: what is accepted in part is continued until everything is
/// written or the system gives the reason why not. Returns false, with errno set, in that case.
bool writeBytes(int file, const char* bytes, std::int64_t size);

/// Copies the contents of an open file into an empty one; `size` is the length of the first. Holes
/// stay holes. The observer is called after each part with its length. Returns false, with errno
/// set, on failure.
bool copyBytes(int from, int to, off_t size, const std::function<void(std::uint64_t)>& observer);
