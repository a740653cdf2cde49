// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <string>

namespace logstore {

// States of the location system, as one line of JSON. Each returns false, having written nothing,
// when the bytes have the wrong size.

bool appendClientManagerState(std::string& out, Bytes state);   ///< 8 bytes
bool appendLocationManagerState(std::string& out, Bytes state); ///< 64 or 72 bytes
bool appendDaemonStatus(std::string& out, Bytes state);         ///< 36 or 40 bytes

} // namespace logstore
