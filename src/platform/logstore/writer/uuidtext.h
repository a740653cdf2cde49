// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/bytebuilder.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace logstore::writer {

/// The format strings of one image.
struct UuidText
{
    struct Entry
    {
        std::uint32_t start = 0;
        Bytes strings{};
    };

    Uuid uuid{};
    std::string path{};
    std::vector<Entry> entries{};

    /// The offset of the text, which is added after the others unless it is there already.
    std::uint32_t offset(std::string_view text);
};

Bytes fileBytes(const UuidText& file);

} // namespace logstore::writer
