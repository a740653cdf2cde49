// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The number of the group whose members may read the system's log, as text. Absent where no group
/// guards it: there the permissions of its files do.
std::optional<QString> administratorsGroup();
