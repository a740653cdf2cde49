// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/tree.h"

struct Printed
{
    std::string text;
    predicate::Arguments arguments;
};

/// A predicate as text again, with its constants as arguments. Parsing the two gives an equal tree.
Printed print(const predicate::Tree& tree);
