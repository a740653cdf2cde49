// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <string>

namespace logstore {

// Texts of what the system's directory of users knows. They return false for bytes of a wrong size.

/// "user: ada@/Local/Default", from u8 type, then a number or a name, then the domain.
bool appendMemberDetails(std::string& out, Bytes bytes);

/// "S-1-5-21", from u8 revision, u8 count, 6 bytes authority, count sub-authorities.
bool appendSid(std::string& out, Bytes bytes);

} // namespace logstore
