// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entry.h"
#include "platform/logstore/message/items.h"
#include "platform/logstore/openchunkset.h"
#include "platform/logstore/oversizestore.h"

namespace logstore {

/// What a format string reference leads to.
struct ResolvedFormat
{
    const FormatProgram* program = nullptr;
    std::string_view failure; ///< the message in place of one, when there is no program
    const Image* sender = nullptr;
};

/// The current entry: its record, and what has been looked up of it.
struct RecordState
{
    EntryKind kind = EntryKind::Other;
    EventType event = EventType::Log;
    std::int64_t time = 0;
    std::uint64_t continuousTime = 0;
    std::uint32_t clock = 0;
    std::uint32_t file = 0; ///< of records
    KnownCatalog* catalog = nullptr;
    const InnerChunk* chunk = nullptr; ///< null for boundaries
    KnownProcess* process = nullptr;
    RecordHead head{};   ///< of records in firehose chunks
    RecordFields fields; ///< of those but loss records
    Bytes data;          ///< of a loss record its data
    bool isBoot = false; ///< of boundaries

    bool subsystemKnown = false;
    bool formatKnown = false;
    bool messageKnown = false;
    Subsystem subsystem;
    ResolvedFormat format;
    std::string message;

    bool isFirehose() const { return chunk && chunk->tag == ChunkTag::Firehose; }
    /// Log, trace, activity and signpost records refer to a format string.
    bool hasFormat() const { return isFirehose() && head.kind != RecordKind::Loss; }
};

/// Looks up what the fields of an entry need: catalogs, string files, oversize chunks.
class EntryResolver
{
public:
    explicit EntryResolver(StoreIndex& index) : m_index(index), m_oversize(index) {}

    OversizeStore& oversize() { return m_oversize; }
    const BootClock& clock(const RecordState& state) const { return m_index.clock(state.clock); }

    /// Makes `state` stand for the next record of a chunk set. False when the record is damaged.
    static bool load(RecordState& state, const OpenChunkSet& set);
    static void load(RecordState& state, const Boundary& boundary);

    const Image* processImage(RecordState& state);
    const Subsystem& subsystem(RecordState& state);
    const ResolvedFormat& format(RecordState& state);
    const Image* sender(RecordState& state);
    std::string_view signpostName(RecordState& state);
    std::string_view message(RecordState& state);
    std::optional<std::uint64_t> senderImageOffset(RecordState& state);

private:
    enum class Use : std::uint8_t { Format, Name };
    ResolvedFormat
    resolve(RecordState& state, std::uint32_t reference, std::uint32_t upper, Use use);
    ResolvedFormat resolveInCache(RecordState& state, std::uint64_t offset, bool dynamic);
    std::uint64_t codeAddress(const RecordState& state) const;
    void readItems(RecordState& state);
    void appendLoss(RecordState& state);

    StoreIndex& m_index;
    OversizeStore m_oversize;
    Items m_items;
};

} // namespace logstore
