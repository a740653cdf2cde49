// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/formatprogram.h"
#include "platform/logstore/message/items.h"

#include <string>

namespace logstore {

/// Appends the message that `program` makes of `items`.
void appendMessage(std::string& out, const FormatProgram& program, const Items& items);

/// Appends one argument as its conversion's letter shows it, decorations aside.
/// `width` and `precision` are those in force: numbers, or Conversion::none.
void appendByLetter(std::string& out,
                    const Conversion& conversion,
                    const Item& item,
                    std::int32_t width,
                    bool leftJustified,
                    std::int32_t precision);

} // namespace logstore
