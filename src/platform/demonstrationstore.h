// SPDX-License-Identifier: MIT
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <filesystem>

/// Writes the log store of an invented Mac below `root`, in the layout of a Mac's own folders: a
/// few thousand entries of the hour before `now` (nanoseconds since 1970), denser towards it. The
/// same `now` gives the same store. A demonstration store that is there already is replaced.
Result<void> writeDemonstrationStore(const std::filesystem::path& root, std::int64_t now);
