// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/chunk.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logstore::writer {

/// Where an image lies in a process; needed for absolute references.
struct ImageEntry
{
    std::uint32_t size = 0;
    Uuid image{};
    std::uint64_t load = 0; ///< 48 bits
};

/// What a process calls a subsystem and category in its records.
struct Subsystem
{
    std::uint16_t identifier = 0;
    std::string subsystem{};
    std::string category{};
};

constexpr std::uint32_t noPersona = 0xffffffff;

/// A process as catalogs describe it.
struct Process
{
    ProcessKey key{};
    std::int32_t pid = 0;
    std::uint32_t user = 0;
    Uuid mainImage{};
    std::optional<Uuid> sharedCache{};
    std::vector<ImageEntry> images{};
    std::vector<Subsystem> subsystems{};
    std::uint32_t persona = 0; ///< 0, as older systems write, and noPersona = none

    bool hasPersona() const { return persona != 0 && persona != noPersona; }

    /// The identifier of the pair, which becomes known to the process if it was not.
    std::uint16_t subsystem(std::string_view name, std::string_view category)
    {
        const auto known =
            std::find_if(subsystems.begin(), subsystems.end(), [&](const Subsystem& each) {
                return each.subsystem == name && each.category == category;
            });
        if (known != subsystems.end())
            return known->identifier;
        const auto identifier = static_cast<std::uint16_t>(subsystems.size() + 1);
        subsystems.push_back({identifier, std::string(name), std::string(category)});
        return identifier;
    }
};

} // namespace logstore::writer
