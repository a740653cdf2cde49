// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <string>

namespace logstore {

// Addresses and DNS data of messages as text. Each returns false, having written nothing, when the
// bytes have the wrong size or shape.

bool appendIpv4(std::string& out, Bytes address);          ///< 4 bytes, network order
bool appendIpv6(std::string& out, Bytes address);          ///< 16 bytes
bool appendSocketAddress(std::string& out, Bytes address); ///< u8 length, u8 family, …; or none
bool appendTaggedAddress(std::string& out, Bytes address); ///< u32 4 or 6, then the address
bool appendMacAddress(std::string& out, Bytes address);
bool appendDomainName(std::string& out, Bytes labels); ///< length-prefixed labels
bool appendDnsCounts(std::string& out,
                     Bytes counts); ///< four u16: additional, authority, answer, question
bool appendDnsIdFlags(std::string& out, Bytes value); ///< u16 flags, u16 id
bool appendDnsHeader(std::string& out, Bytes header); ///< six big-endian u16

} // namespace logstore
