// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entry.h"
#include "platform/logstore/entryfilter.h"
#include "platform/logstore/storeorigin.h"
#include "platform/logstore/storeproblems.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>

namespace logstore {

class EntryStreamState;
class StoreIndex;

/// The entries of a store in ascending time from a position on, read as they are asked for.
/// At equal times boundaries come first, then the order is by file (Persist, Special, Signpost,
/// HighVolume, the live file; by name within a folder), then by place in the file.
class EntryStream
{
public:
    explicit EntryStream(std::unique_ptr<EntryStreamState> state);
    EntryStream(const EntryStream&) = delete;
    EntryStream(EntryStream&&) noexcept;
    EntryStream& operator=(const EntryStream&) = delete;
    EntryStream& operator=(EntryStream&&) noexcept;
    ~EntryStream();

    /// The next entry, or null at the end. The entry is valid until the next call.
    const Entry* next();

private:
    std::unique_ptr<EntryStreamState> m_state;
};

/// Called now and then while a store is opened, with the part that is done (0 to 1). May run
/// anything but the store; returning false cancels the opening.
using OpenWatch = std::function<bool(double fraction)>;

/// A log store: an archive, a copy of a Mac's log folders, or the folders themselves.
class Store
{
public:
    static constexpr std::int64_t beginning = std::numeric_limits<std::int64_t>::min();

    /// Indexes the chunk sets of the store's trace files. Damaged files are read as far as they go.
    /// Fails when `root` is not a readable folder, is not laid out as a store, or holds no trace
    /// file that can be opened, or when `watch` cancels it.
    static StoreResult<Store> open(const std::filesystem::path& root,
                                   StoreOrigin origin = StoreOrigin::HandedOver,
                                   const OpenWatch& watch = {});

    /// The time of the last entry, or `beginning` for a store without entries.
    std::int64_t endTime() const;

    /// Bytes of all trace files.
    std::uint64_t traceBytes() const;
    std::size_t fileCount() const; ///< of trace and time files

    /// What opening and all streams so far could not read.
    const StoreProblems& problems() const;

    /// The entries from `from` on that match `filter`; all when it is null.
    EntryStream entries(std::int64_t from = beginning,
                        std::shared_ptr<const EntryFilter> filter = nullptr) const;

private:
    explicit Store(std::shared_ptr<StoreIndex> index);
    std::shared_ptr<StoreIndex> m_index;
};

} // namespace logstore
