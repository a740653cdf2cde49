// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace logstore {

/// Sixteen bytes in the order in which the text form is written.
struct Uuid
{
    std::array<std::uint8_t, 16> bytes{};

    bool operator==(const Uuid& other) const { return bytes == other.bytes; }
    bool operator<(const Uuid& other) const { return bytes < other.bytes; }

    /// Upper case, 8-4-4-4-12.
    std::string text() const;
    /// Reads 32 hexadecimal digits in either case, hyphens anywhere ignored; nothing else may stand
    /// there.
    static std::optional<Uuid> fromText(std::string_view text);
};

struct UuidHash
{
    std::size_t operator()(const Uuid& uuid) const
    {
        std::array<std::uint64_t, 2> halves{};
        std::memcpy(halves.data(), uuid.bytes.data(), sizeof halves);
        return std::hash<std::uint64_t>()(halves[0] ^ (halves[1] * 0x9e3779b97f4a7c15ULL));
    }
};

} // namespace logstore
