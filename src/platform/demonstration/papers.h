// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace demonstration {

/// A trace file that was closed, for the log daemon's statistics.
struct Rotation
{
    std::string file; ///< as in Persist/0000000000000001.tracev3
    std::int64_t time = 0;
    std::size_t size = 0;
};

/// The daemon's statistics text: a record for each closed file and one for messages kept in memory
/// only.
std::string statisticsText(const std::vector<Rotation>& rotations);

/// The property list that tells how long records are kept, with the start of the boot as every
/// reference.
std::string versionPropertyList(const std::string& boot);

} // namespace demonstration
