// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/strings/textpool.h"
#include "platform/logstore/uuid.h"

namespace logstore {

/// An executable or library. The texts live in the store's text pool.
struct Image
{
    std::string_view path;
    std::string_view name;
    Uuid uuid;

    Image() = default;
    Image(std::string_view pooledPath, const Uuid& imageUuid)
        : path(pooledPath)
        , name(lastPathComponent(pooledPath))
        , uuid(imageUuid)
    {
    }
};

} // namespace logstore
