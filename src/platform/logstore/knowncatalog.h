// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/strings/stringfiles.h"
#include "platform/logstore/trace/catalog.h"

#include <unordered_map>

namespace logstore {

/// The texts of a subsystem entry.
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

/// A process of a catalog with what a stream has found out about it.
struct KnownProcess : CatalogProcess
{
    explicit KnownProcess(const CatalogProcess& process) : CatalogProcess(process) {}

    /// Sets the two files, the first time it is called.
    void openFiles(StringFiles& strings);

    UuidText* mainFile = nullptr;
    SharedCache* cacheFile = nullptr;
    Verdict verdict = Verdict::NotAsked;
    Verdict firehoseVerdict = Verdict::NotAsked; ///< of its records in firehose chunks
    KnownSubsystem noSubsystem;                  ///< of records that name none

private:
    friend class KnownCatalog;
    bool m_filesOpened = false;
    std::unordered_map<std::uint16_t, KnownSubsystem> m_subsystems; ///< by identifier
    std::vector<LoadedImage> m_imagesByLoad;
    std::vector<std::uint32_t> m_subsystemsByIdentifier; ///< numbers of entries
};

/// A catalog while a stream reads the chunk sets after it.
class KnownCatalog
{
public:
    /// `body` is that of the catalog.
    explicit KnownCatalog(std::vector<std::uint8_t> body);

    /// Null when the catalog has no such process.
    KnownProcess* find(const ProcessKey& key);

    /// The subsystem with this identifier of the process; both texts empty when there is none.
    KnownSubsystem&
    subsystem(KnownProcess& process, std::optional<std::uint16_t> identifier, TextPool& pool) const;

    /// The identifier of the image that holds a code address, by the process's image table.
    std::optional<Uuid>
    imageAt(KnownProcess& process, std::uint64_t address, std::uint64_t& load) const;

private:
    Subsystem readSubsystem(KnownProcess& process, std::uint16_t identifier, TextPool& pool) const;
    static std::optional<Bytes> subsystemEntry(KnownProcess& process, std::uint16_t identifier);

    Catalog m_catalog;
    std::vector<KnownProcess> m_processes; ///< by key
};

} // namespace logstore
