// SPDX-License-Identifier: MIT
#pragma once

#include "platform/demonstration/stage.h"

#include <cstdint>
#include <span>

namespace demonstration {

/// A few events that belong together, the first of them at the time given.
using Scene = void (*)(Stage& stage, std::int64_t time);

/// Every scene at least once, the common ones several times, in a mixed order. Whatever a user is
/// likely to look for occurs in each round.
std::span<const Scene> scenes();

/// What the machine writes when it starts.
void startUp(Stage& stage, std::int64_t time);

} // namespace demonstration
