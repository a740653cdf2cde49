// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/formatprogram.h"
#include "platform/logstore/message/items.h"

#include <string>

namespace logstore {

/// A conversion, with the width, justification and precision in force for one argument: numbers, or
/// Conversion::none.
struct Field
{
    const Conversion& conversion;
    std::int32_t width;
    bool leftJustified;
    std::int32_t precision;
};

/// Appends one argument as its conversion's letter shows it, decorations aside.
void appendByLetter(std::string& out, const Field& field, const Item& item);

} // namespace logstore
