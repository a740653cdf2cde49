// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/strings/textpool.h"
#include "platform/logstore/trace/chunk.h"
#include "platform/logstore/uuid.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace logstore {

class SharedCache;
class UuidText;

/// What a catalog says of one chunk set that follows it.
struct SubChunk
{
    std::uint64_t earliest; ///< continuous times of its records, both exact
    std::uint64_t latest;
};

/// A process's subsystem entry, resolved.
struct Subsystem
{
    std::string_view subsystem;
    std::string_view category;
};

/// Whether anything of a process, or of one of its subsystems, can match a stream's filter.
enum class Verdict : std::uint8_t { NotAsked, Possible, Excluded };

/// A subsystem entry that has been looked up before.
struct KnownSubsystem
{
    Subsystem texts;
    bool isResolved = false;
    Verdict verdict = Verdict::NotAsked;
};

/// An image of a process, and where the process has it.
struct LoadedImage
{
    std::uint64_t load;
    std::uint32_t size;
    std::uint16_t identifier; ///< index
};

/// A process as a catalog describes it. The image and subsystem tables stay as bytes until they
/// are asked for: most are never.
struct CatalogProcess
{
    ProcessKey key;
    std::int32_t processIdentifier = 0;
    std::uint32_t userIdentifier = 0;
    bool hasPersona = false;
    std::optional<Uuid> mainImage;
    std::optional<Uuid> sharedCache;
    Bytes images; ///< 16 bytes each
    static constexpr std::size_t subsystemEntrySize = 6;
    Bytes subsystems;

    // Filled in when first needed.
    UuidText* mainFile = nullptr;
    SharedCache* cacheFile = nullptr;
    bool filesLookedUp = false;
    Verdict verdict = Verdict::NotAsked;
    Verdict firehoseVerdict = Verdict::NotAsked; ///< of its records in firehose chunks
    std::unordered_map<std::uint16_t, KnownSubsystem> knownSubsystems; ///< by identifier
    KnownSubsystem noSubsystem; ///< of records that name none
    std::vector<LoadedImage> imagesByLoad;
    std::vector<std::uint32_t> subsystemsByIdentifier; ///< numbers of entries
};

/// The processes that the chunk sets after a catalog speak of.
class Catalog
{
public:
    /// Keeps the body; reads as many process entries as are whole.
    explicit Catalog(std::vector<std::uint8_t> body);

    /// Only the sub-chunk entries of a catalog's body, as many as are whole.
    static std::vector<SubChunk> readSubChunks(Bytes body);

    /// Null when the catalog has no such process.
    CatalogProcess* find(const ProcessKey& key);

    /// The subsystem with this identifier of the process; both texts empty when there is none.
    KnownSubsystem& subsystem(CatalogProcess& process,
                              std::optional<std::uint16_t> identifier,
                              TextPool& pool) const;

    /// The identifier of the image that holds a code address, by the process's image table.
    std::optional<Uuid>
    imageAt(CatalogProcess& process, std::uint64_t address, std::uint64_t& load) const;

private:
    void readProcesses();
    Subsystem
    readSubsystem(CatalogProcess& process, std::uint16_t identifier, TextPool& pool) const;
    std::optional<Uuid> identifier(std::uint16_t index) const;
    std::string_view pooledText(std::uint16_t offset, TextPool& pool) const;

    std::vector<std::uint8_t> m_body;
    Bytes m_identifiers;
    Bytes m_strings;
    std::vector<CatalogProcess> m_processes; ///< sorted by key
};

} // namespace logstore
