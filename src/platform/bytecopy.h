// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <sys/types.h>

/// Writes all bytes to an open file. As below, false says that this cannot be done; errno says why.
bool writeBytes(int file, const char* bytes, std::int64_t size);

/// Copies what an open file of that size holds into an empty one, in the way that takes least. The
/// observer is called after each part with its length.
bool copyBytes(int from, int to, off_t size, const std::function<void(std::uint64_t)>& observer);
