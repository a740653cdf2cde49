// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"

namespace logstore::writer {

/// How an LZBITMAP stream is made.
struct LzbitmapFormat
{
    bool largeChunks = true; ///< 32 KiB each, otherwise 16
    bool runs = true;        ///< equal tokens in a row are counted

    std::uint8_t flags() const;
};

/// The content as an LZBITMAP stream. Chunks that compression does not shorten are stored.
Bytes lzbitmapStream(ByteView content, LzbitmapFormat format);

} // namespace logstore::writer
