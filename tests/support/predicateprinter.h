// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/tree.h"

/// A predicate as text again, with the arguments for what only an argument can express: dates, and
/// field names that are no words.
struct Printed
{
    std::string text;
    predicate::Arguments arguments;
};

/// Conditions and arithmetic inside others stand in parentheses, texts in double quotation marks.
/// Parsing what is printed gives an equal tree.
Printed print(const predicate::Tree& tree);
