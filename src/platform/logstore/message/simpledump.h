// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"
#include "platform/logstore/uuid.h"

namespace logstore {

// offset  size  field
//      0 8, 4  process key
//     12  1, 1  time to live, type
//     16     8  continuous time
//     24     8  thread
//     32     8  code address
//     40    16  sender image
//     56    16  shared cache
//     76  4, 4  sizes of the subsystem and of the message
//     84        the two texts
struct SimpleDump
{
    static constexpr std::size_t headSize = 84;

    Bytes body; ///< at least headSize bytes

    std::uint8_t type() const { return body[13]; }
    std::uint64_t thread() const { return loadAt<std::uint64_t>(body, 24); }
    Uuid senderImage() const { return loadAt<Uuid>(body, 40); }
    /// Both may be ill-formed UTF-8.
    std::string_view subsystem() const { return cString(clipped(body, headSize, subsystemSize())); }
    std::string_view message() const
    {
        return cString(clipped(body, headSize + std::uint64_t{subsystemSize()},
                               loadAt<std::uint32_t>(body, 80)));
    }

private:
    std::uint32_t subsystemSize() const { return loadAt<std::uint32_t>(body, 76); }
};

} // namespace logstore
