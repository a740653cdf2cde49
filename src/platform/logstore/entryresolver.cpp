// SPDX-License-Identifier: MIT
#include "platform/logstore/entryresolver.h"

#include "platform/base/utf8.h"
#include "platform/logstore/message/renderer.h"
#include "platform/logstore/message/simpledump.h"
#include "platform/logstore/message/statedump.h"
#include "platform/logstore/message/textoutput.h"
#include "platform/logstore/trace/innerchunks.h"
#include "platform/logstore/trace/oversize.h"

namespace logstore {

namespace {

constexpr std::string_view missingImage = "<compose failure [UUID]>";
constexpr std::string_view missingCache = "<compose failure [shared UUID]>";
constexpr std::string_view missingAddress = "<compose failure [missing precomposed log]>";
constexpr std::string_view badCacheOffset = "<Invalid shared cache format string offset>";

constexpr std::size_t lossSize = 24; ///< of the data of loss records
constexpr std::uint32_t dynamicBit = 0x80000000;
constexpr unsigned upperShift = 31;

const FormatProgram& dynamicFormat()
{
    static const FormatProgram program("%s");
    return program;
}

void setKind(RecordState& state)
{
    switch (state.head.kind) {
    case RecordKind::Activity:
        state.kind = EntryKind::Activity;
        state.event =
            state.head.type == userActionType ? EventType::UserAction : EventType::ActivityCreate;
        break;
    case RecordKind::Trace:
        state.kind = EntryKind::Log;
        state.event = EventType::Trace;
        break;
    case RecordKind::Log:
        state.kind = EntryKind::Log;
        state.event = EventType::Log;
        break;
    case RecordKind::Signpost:
        state.kind = EntryKind::Signpost;
        state.event = EventType::Signpost;
        break;
    case RecordKind::Loss:
        state.kind = EntryKind::Other;
        state.event = EventType::Loss;
        break;
    }
}

bool loadFirehoseRecord(RecordState& state, const OpenChunkSet& set)
{
    const FirehoseChunk& chunk = state.chunk->firehose;
    const std::size_t offset = set.nextOffset();
    state.head = RecordHead::read(chunk.records.subspan(offset));
    state.data = chunk.recordData(offset, state.head);
    state.continuousTime = chunk.continuousTime(state.head);
    setKind(state);
    if (state.head.kind == RecordKind::Loss)
        return state.data.size() >= lossSize;
    const bool hasPersona = state.process && state.process->hasPersona;
    const auto fields = RecordFields::read(state.head, state.data, hasPersona);
    if (fields)
        state.fields = *fields;
    return fields.has_value();
}

} // namespace

bool EntryResolver::load(RecordState& state, const OpenChunkSet& set)
{
    state.time = set.nextTime();
    state.clock = set.place().clock;
    state.file = set.place().file;
    state.catalog = set.catalog();
    state.chunk = &set.nextChunk();
    state.process = state.chunk->process;
    state.subsystemKnown = state.formatKnown = state.messageKnown = false;
    if (state.chunk->tag == ChunkTag::Firehose)
        return loadFirehoseRecord(state, set);
    const bool isState = state.chunk->tag == ChunkTag::StateDump;
    state.kind = isState ? EntryKind::Other : EntryKind::Log;
    state.event = isState ? EventType::StateDump : EventType::SimpleDump;
    state.continuousTime = dumpTime(state.chunk->body);
    return true;
}

void EntryResolver::load(RecordState& state, const Boundary& boundary)
{
    state.kind = EntryKind::Boundary;
    state.event = EventType::TimeSync;
    state.time = boundary.time;
    state.continuousTime = boundary.continuousTime;
    state.clock = boundary.clock;
    state.isBoot = boundary.isBoot;
    state.catalog = nullptr;
    state.chunk = nullptr;
    state.process = nullptr;
    state.subsystemKnown = state.formatKnown = state.messageKnown = false;
}

const Image* EntryResolver::processImage(RecordState& state)
{
    if (!state.process)
        return nullptr;
    state.process->openFiles(m_index.strings());
    return state.process->mainFile ? &state.process->mainFile->image() : nullptr;
}

const Subsystem& EntryResolver::subsystem(RecordState& state)
{
    if (state.subsystemKnown)
        return state.subsystem;
    state.subsystemKnown = true;
    state.subsystem = {};
    if (state.event == EventType::SimpleDump)
        state.subsystem.subsystem =
            m_index.texts().internUnchecked(SimpleDump{state.chunk->body}.subsystem());
    else if (state.hasFormat() && state.process)
        state.subsystem =
            state.catalog->subsystem(*state.process, state.fields.subsystem, m_index.texts()).texts;
    return state.subsystem;
}

const ResolvedFormat& EntryResolver::format(RecordState& state)
{
    if (!state.formatKnown) {
        state.formatKnown = true;
        const std::uint32_t upper = state.head.source() == StringSource::LargeSharedCache
                                            && state.fields.largeSharedCache != 0
                                        ? state.fields.largeSharedCache
                                        : state.fields.largeOffset;
        state.format = resolve(state, state.head.reference, upper, Use::Format);
    }
    return state.format;
}

/// The address of the code that wrote the record, in the terms of its string source.
std::uint64_t EntryResolver::codeAddress(const RecordState& state) const
{
    const std::uint64_t low = state.fields.addressLow;
    switch (state.head.source()) {
    case StringSource::SharedCache:
        return low + (std::uint64_t{state.fields.largeOffset} >> 1 << 32);
    case StringSource::LargeSharedCache:
        return low + (std::uint64_t{state.fields.largeOffset} << 32);
    case StringSource::Absolute: return low | std::uint64_t{state.fields.addressHigh} << 32;
    default: return low;
    }
}

ResolvedFormat
EntryResolver::resolve(RecordState& state, std::uint32_t reference, std::uint32_t upper, Use use)
{
    const bool dynamic = (reference & dynamicBit) != 0;
    const std::uint64_t offset = (reference & ~dynamicBit) | std::uint64_t{upper} << upperShift;
    const StringSource source = state.head.source();
    if (state.process)
        state.process->openFiles(m_index.strings());

    UuidText* file = nullptr;
    switch (source) {
    case StringSource::SharedCache:
    case StringSource::LargeSharedCache: return resolveInCache(state, offset, dynamic);
    case StringSource::MainExecutable:
        file = state.process ? state.process->mainFile : nullptr;
        break;
    case StringSource::Relative: file = m_index.strings().uuidText(state.fields.image); break;
    case StringSource::Absolute: {
        std::uint64_t load = 0;
        const auto image = state.process
                               ? state.catalog->imageAt(*state.process, codeAddress(state), load)
                               : std::nullopt;
        if (!image)
            return {nullptr, missingAddress, nullptr};
        file = m_index.strings().uuidText(*image);
        break;
    }
    default: return {nullptr, missingAddress, nullptr};
    }
    if (!file)
        return {nullptr, missingImage, nullptr};
    const bool namesItsCode =
        use == Use::Format && source == StringSource::Absolute && offset == codeAddress(state);
    if (dynamic || namesItsCode)
        return {&dynamicFormat(), {}, &file->image()};
    const FormatProgram* program = file->formatAt(offset);
    return {program, program ? std::string_view() : missingImage, &file->image()};
}

ResolvedFormat EntryResolver::resolveInCache(RecordState& state, std::uint64_t offset, bool dynamic)
{
    SharedCache* cache = state.process ? state.process->cacheFile : nullptr;
    if (!cache)
        return {nullptr, missingCache, nullptr};
    if (dynamic) {
        const Image* image = cache->imageAt(offset);
        return {&dynamicFormat(), {}, image ? image : cache->imageAt(codeAddress(state))};
    }
    const SharedCache::Found found = cache->formatAt(offset);
    if (!found.program)
        return {nullptr, badCacheOffset, nullptr};
    // The two upper halves say the same in different units; where they differ the code lies outside
    // the cache.
    const std::uint16_t large = state.fields.largeOffset;
    const std::uint16_t cacheNumber = state.fields.largeSharedCache;
    const bool outside = large != 0 && cacheNumber != 0 && large != cacheNumber >> 1;
    return {found.program, {}, outside ? nullptr : found.image};
}

const Image* EntryResolver::sender(RecordState& state)
{
    if (!state.chunk || state.event == EventType::Loss)
        return nullptr;
    if (state.isFirehose())
        return format(state).sender;
    const Uuid uuid = state.event == EventType::StateDump
                          ? StateDump{state.chunk->body}.senderImage()
                          : SimpleDump{state.chunk->body}.senderImage();
    if (const UuidText* file = m_index.strings().uuidText(uuid))
        return &file->image();
    if (!state.process)
        return nullptr;
    state.process->openFiles(m_index.strings());
    return state.process->cacheFile ? state.process->cacheFile->imageWith(uuid) : nullptr;
}

std::string_view EntryResolver::signpostName(RecordState& state)
{
    if (state.event != EventType::Signpost || (state.head.flags & HasName) == 0)
        return {};
    const ResolvedFormat name =
        resolve(state, state.fields.nameReference & ~dynamicBit, state.fields.nameUpper, Use::Name);
    return name.program ? m_index.texts().intern(name.program->text()) : std::string_view();
}

void EntryResolver::readItems(RecordState& state)
{
    m_items.clear();
    const bool isLog = state.event == EventType::Log || state.event == EventType::Signpost;
    if (state.event == EventType::Trace) {
        m_items.readTrace(state.fields.items);
    } else if (isLog && (state.head.flags & HasOversize) != 0) {
        const Bytes body =
            m_oversize.find({clock(state).boot(), state.chunk->firehose.key,
                             state.fields.oversizeReference, state.file, state.continuousTime});
        if (!body.empty()) {
            const OversizeChunk oversize = OversizeChunk::read(body);
            m_items.read(oversize.publicData, oversize.privateData);
        }
    } else if (isLog) {
        const bool hasPrivate = (state.head.flags & HasPrivateRange) != 0;
        m_items.read(state.fields.items,
                     hasPrivate ? state.chunk->firehose.privateData(state.fields) : Bytes{});
    }
}

void EntryResolver::appendLoss(RecordState& state)
{
    ByteReader in(state.data);
    const auto first = in.read<std::uint64_t>();
    const auto last = in.read<std::uint64_t>();
    const auto count = in.read<std::uint64_t>();
    state.message += "lost >=";
    appendDecimal(state.message, count);
    state.message += " unreliable messages from ";
    appendDecimal(state.message, first);
    state.message += '-';
    appendDecimal(state.message, last);
    state.message += " (Mach continuous exact start-approx. end)";
}

std::string_view EntryResolver::message(RecordState& state)
{
    if (state.messageKnown)
        return state.message;
    state.messageKnown = true;
    state.message.clear();
    switch (state.event) {
    case EventType::TimeSync:
        if (state.isBoot)
            state.message.append("=== system boot: ").append(clock(state).boot().text());
        else
            state.message = "=== system wallclock time adjusted";
        break;
    case EventType::Loss: appendLoss(state); break;
    case EventType::StateDump: StateDump{state.chunk->body}.appendMessage(state.message); break;
    case EventType::SimpleDump:
        appendUtf8(state.message, SimpleDump{state.chunk->body}.message());
        break;
    default:
        if (const ResolvedFormat& resolved = format(state); resolved.program) {
            readItems(state);
            appendMessage(state.message, *resolved.program, m_items);
        } else {
            state.message = resolved.failure;
        }
    }
    return state.message;
}

std::optional<std::uint64_t> EntryResolver::senderImageOffset(RecordState& state)
{
    if (!state.hasFormat())
        return std::nullopt;
    const std::uint64_t address = codeAddress(state);
    switch (state.head.source()) {
    case StringSource::MainExecutable:
    case StringSource::Relative: return address;
    case StringSource::Absolute: {
        std::uint64_t load = 0;
        if (state.process && state.catalog->imageAt(*state.process, address, load))
            return address - load;
        return std::nullopt;
    }
    case StringSource::SharedCache:
    case StringSource::LargeSharedCache: {
        const Image* image = format(state).sender;
        if (!image || SharedCache::textStart(*image) > address)
            return std::nullopt;
        return address - SharedCache::textStart(*image);
    }
    }
    return std::nullopt;
}

} // namespace logstore
