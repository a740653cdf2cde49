// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/propertylist/propertylist.h"

#include <string>

namespace logstore {

/// Appends the list in its descriptive text form: a lone value bare, collections with brackets.
void appendDescription(std::string& out, const PropertyList& list);

} // namespace logstore
