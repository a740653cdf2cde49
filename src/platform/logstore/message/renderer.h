// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/formatprogram.h"
#include "platform/logstore/message/items.h"

#include <string>

namespace logstore {

/// Appends the message that `program` makes of `items`.
void appendMessage(std::string& out, const FormatProgram& program, const Items& items);

} // namespace logstore
