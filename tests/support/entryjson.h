// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entry.h"
#include "support/jsonline.h"

/// Writes the members of a store's entry, as files of expected entries name them.
void writeEntry(JsonLine& line, std::uint64_t index, const logstore::Entry& entry);
