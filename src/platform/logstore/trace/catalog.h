// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/uuid.h"

#include <optional>
#include <string_view>
#include <vector>

namespace logstore {

/// What a catalog says of one chunk set that follows it.
struct SubChunk
{
    std::uint64_t earliest; ///< continuous times of its records, both exact
    std::uint64_t latest;
};

/// A process as a catalog describes it. The image and subsystem tables stay bytes, as most are
/// never needed.
struct CatalogProcess
{
    ProcessKey key;
    std::int32_t processIdentifier = 0;
    std::uint32_t userIdentifier = 0;
    bool hasPersona = false;
    std::optional<Uuid> mainImage;
    std::optional<Uuid> sharedCache;
    static constexpr std::size_t imageEntrySize = 16;
    static constexpr std::size_t subsystemEntrySize = 6;
    Bytes images;
    Bytes subsystems;
};

/// The processes that the chunk sets after a catalog speak of.
class Catalog
{
public:
    /// Keeps the body; reads as many process entries as are whole.
    explicit Catalog(std::vector<std::uint8_t> body);

    /// Only the sub-chunk entries of a catalog's body, as many as are whole.
    static std::vector<SubChunk> readSubChunks(Bytes body);

    /// By key.
    const std::vector<CatalogProcess>& processes() const { return m_processes; }

    std::optional<Uuid> identifier(std::uint16_t index) const;
    /// Bytes that may not be valid UTF-8.
    std::string_view string(std::uint16_t offset) const;

private:
    void readProcesses();

    std::vector<std::uint8_t> m_body;
    Bytes m_identifiers;
    Bytes m_strings;
    std::vector<CatalogProcess> m_processes; ///< sorted by key
};

} // namespace logstore
