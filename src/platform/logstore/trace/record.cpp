// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/record.h"

#include "platform/logstore/trace/recordfit.h"

namespace logstore {

namespace {

bool has(const RecordHead& head, RecordFlag flag)
{
    return (head.flags & flag) != 0;
}

constexpr std::size_t personaSize = 4;

void readActivities(RecordFields& fields,
                    const RecordHead& head,
                    std::size_t personaBytes,
                    ByteReader& in)
{
    if (head.kind == RecordKind::Trace)
        return;
    if (has(head, HasCurrentActivity))
        fields.currentActivity = in.read<std::uint64_t>();
    in.skip(personaBytes);
    if (head.kind == RecordKind::Activity) {
        if (has(head, HasUniqueProcess))
            fields.uniqueProcess = in.read<std::uint64_t>();
        if (has(head, HasOtherActivityOrSubsystem))
            fields.otherActivity = in.read<std::uint64_t>();
        if (head.type != userActionType)
            fields.newActivity = in.read<std::uint64_t>();
    } else if (has(head, HasPrivateRange)) {
        fields.privateOffset = in.read<std::uint16_t>();
        fields.privateSize = in.read<std::uint16_t>();
    }
}

void readStringPlace(RecordFields& fields, const RecordHead& head, ByteReader& in)
{
    fields.addressLow = in.read<std::uint32_t>();
    if (has(head, HasLargeOffset))
        fields.largeOffset = in.read<std::uint16_t>();
    switch (head.source()) {
    case StringSource::Absolute: fields.addressHigh = in.read<std::uint16_t>(); break;
    case StringSource::Relative: fields.image = in.read<Uuid>(); break;
    case StringSource::LargeSharedCache: fields.largeSharedCache = in.read<std::uint16_t>(); break;
    case StringSource::MainExecutable:
    case StringSource::SharedCache: break;
    }
}

void readOrigin(RecordFields& fields, const RecordHead& head, ByteReader& in)
{
    if (head.kind != RecordKind::Log && head.kind != RecordKind::Signpost)
        return;
    if (has(head, HasOtherActivityOrSubsystem))
        fields.subsystem = in.read<std::uint16_t>();
    if (has(head, HasRules))
        fields.timeToLive = in.read<std::uint8_t>();
    if (has(head, HasOversize))
        fields.oversizeReference = in.read<std::uint32_t>();
}

void readSignpost(RecordFields& fields, const RecordHead& head, ByteReader& in)
{
    if (head.kind != RecordKind::Signpost)
        return;
    fields.signpostIdentifier = in.read<std::uint64_t>();
    if (!has(head, HasName))
        return;
    fields.nameReference = in.read<std::uint32_t>();
    if (has(head, HasLargeOffset) || head.source() == StringSource::LargeSharedCache)
        fields.nameUpper = in.read<std::uint16_t>();
}

std::optional<RecordFields>
readForm(const RecordHead& head, Bytes data, std::size_t personaBytes = 0)
{
    RecordFields fields;
    ByteReader in(data);
    readActivities(fields, head, personaBytes, in);
    readStringPlace(fields, head, in);
    readOrigin(fields, head, in);
    readSignpost(fields, head, in);
    if (!in.ok())
        return std::nullopt;
    fields.items = in.rest();
    return fields;
}

} // namespace

std::optional<RecordFields>
RecordFields::read(const RecordHead& head, Bytes data, bool processHasPersona)
{
    if (!has(head, HasPersona) || head.kind == RecordKind::Trace)
        return readForm(head, data);
    const auto withPersona = readForm(head, data, personaSize);
    const auto without = readForm(head, data);
    const Fit withFits = withPersona ? fitOf(head, *withPersona, 0) : Fit::None;
    // The size of the data may count the identifier that is not there.
    const Fit withoutFits = without ? fitOf(head, *without, personaSize) : Fit::None;
    if (withFits != withoutFits)
        return withFits > withoutFits ? withPersona : without;
    return processHasPersona ? without : withPersona;
}

} // namespace logstore
