// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/uuid.h"

#include <string>

namespace logstore {

// offset  size  field
//      0 8, 4  process key
//     12     1  time to live
//     16     8  continuous time
//     24     8  activity
//     32    16  sender image
//     48     4  data type: 1 property list, 2 protocol buffer, 3 custom
//     52     4  data size
//     56    64  custom: the decoder's library
//    120    64  custom: the decoder's type
//    184    64  title
//    248        data
struct StateDump
{
    static constexpr std::size_t headSize = 248;

    Bytes body; ///< at least headSize bytes

    std::uint64_t activityIdentifier() const;
    Uuid senderImage() const { return loadAt<Uuid>(body, 32); }

    /// Appends the title and, on the next line, the rendering of the data.
    void appendMessage(std::string& out) const;
};

} // namespace logstore
