// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace logstore::writer {

/// The format strings of all images of a shared cache.
struct SharedCache
{
    struct Image
    {
        Uuid uuid{};
        std::string path{};
        std::uint64_t start = 0; ///< of its text
        std::uint32_t size = 0;
    };
    struct Range
    {
        std::uint64_t start = 0;
        std::uint64_t image = 0; ///< an index
        Bytes strings{};
    };

    Uuid uuid{};
    std::uint16_t version = 2; ///< 1 has offsets of 32 bits
    std::vector<Image> images{};
    std::vector<Range> ranges{};

    /// The offset of the text in the image's last range. It is added there unless it is there
    /// already; a range is begun at the image's start when there is none.
    std::uint64_t offset(std::size_t image, std::string_view text);
};

Bytes fileBytes(const SharedCache& cache);

} // namespace logstore::writer
