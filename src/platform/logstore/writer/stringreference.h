// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/uuid.h"

#include <cstdint>
#include <optional>

namespace logstore::writer {

/// Where a record says its format string is; the values are those of its flags.
enum class StringSource : std::uint16_t {
    None = 0,
    MainExecutable = 2,
    SharedCache = 4,
    Absolute = 8,
    Relative = 0xa,
    LargeSharedCache = 0xc
};

/// A record's reference to its format string, field by field. The functions below make the usual
/// ones.
struct StringReference
{
    StringSource source = StringSource::MainExecutable;
    std::uint32_t reference = 0;
    std::uint32_t addressLow = 0;
    std::optional<std::uint16_t> largeOffset{};
    std::uint16_t addressHigh = 0; ///< of Absolute
    Uuid image{};                  ///< of Relative
    std::uint16_t largeCache = 0;  ///< of LargeSharedCache
};

/// A signpost's name: an offset in the same file as the format string.
struct NameReference
{
    std::uint32_t reference = 0;
    std::uint16_t upper = 0;
};

constexpr std::uint32_t dynamicFlag = 0x80000000;
constexpr unsigned largeOffsetShift = 31; ///< large offsets count pieces of 2 GiB

constexpr StringReference inMain(std::uint32_t offset)
{
    return {StringSource::MainExecutable, offset, offset, {}, 0, {}, 0};
}

constexpr StringReference inImage(const Uuid& image, std::uint32_t offset)
{
    return {StringSource::Relative, offset, offset, {}, 0, image, 0};
}

/// `address` lies in one of the process's image entries; `offset` counts in that image's strings.
constexpr StringReference absolute(std::uint64_t address, std::uint32_t offset)
{
    return {StringSource::Absolute,
            offset,
            static_cast<std::uint32_t>(address),
            {},
            static_cast<std::uint16_t>(address >> 32),
            {},
            0};
}

/// Uses the large offset from 2 GiB on.
constexpr StringReference inSharedCache(std::uint64_t offset)
{
    StringReference result{StringSource::SharedCache, 0, 0, {}, 0, {}, 0};
    result.reference =
        static_cast<std::uint32_t>(offset & ~std::uint64_t{dynamicFlag}) & ~dynamicFlag;
    result.addressLow = static_cast<std::uint32_t>(offset);
    if (offset >> largeOffsetShift != 0)
        result.largeOffset = static_cast<std::uint16_t>(offset >> largeOffsetShift);
    return result;
}

/// The form with two numbers, of systems whose shared cache is larger than 4 GiB.
constexpr StringReference inLargeSharedCache(std::uint64_t offset)
{
    StringReference result = inSharedCache(offset);
    result.source = StringSource::LargeSharedCache;
    result.largeCache = static_cast<std::uint16_t>(offset >> largeOffsetShift);
    result.largeOffset = static_cast<std::uint16_t>(offset >> 32);
    return result;
}

/// The same image with the format `%s`.
constexpr StringReference dynamic(StringReference reference)
{
    reference.reference |= dynamicFlag;
    return reference;
}

/// The name at `offset` of the file that a signpost's format string stands in.
constexpr NameReference nameAt(std::uint64_t offset)
{
    return {static_cast<std::uint32_t>(offset) & ~dynamicFlag,
            static_cast<std::uint16_t>(offset >> largeOffsetShift)};
}

} // namespace logstore::writer
