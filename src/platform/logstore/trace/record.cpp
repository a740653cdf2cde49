// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/record.h"

namespace logstore {

std::optional<RecordFields> RecordFields::read(const RecordHead& head, Bytes data)
{
    RecordFields fields;
    ByteReader in(data);
    const auto has = [flags = head.flags](RecordFlag flag) { return (flags & flag) != 0; };
    const auto source = static_cast<StringSource>(head.flags & StringSourceMask);

    if (head.kind != RecordKind::Trace && has(HasCurrentActivity))
        fields.currentActivity = in.read<std::uint64_t>();
    if (head.kind == RecordKind::Activity) {
        if (has(HasUniqueProcess))
            fields.uniqueProcess = in.read<std::uint64_t>();
        if (has(HasOtherActivityOrSubsystem))
            fields.otherActivity = in.read<std::uint64_t>();
        if (head.type != userActionType)
            fields.newActivity = in.read<std::uint64_t>();
    } else if (head.kind != RecordKind::Trace && has(HasPrivateRange)) {
        fields.privateOffset = in.read<std::uint16_t>();
        fields.privateSize = in.read<std::uint16_t>();
    }

    fields.addressLow = in.read<std::uint32_t>();
    if (has(HasLargeOffset))
        fields.largeOffset = in.read<std::uint16_t>();
    if (source == StringSource::Absolute)
        fields.addressHigh = in.read<std::uint16_t>();
    else if (source == StringSource::Relative)
        fields.image = in.read<Uuid>();
    else if (source == StringSource::LargeSharedCache)
        fields.largeSharedCache = in.read<std::uint16_t>();

    if (head.kind == RecordKind::Log || head.kind == RecordKind::Signpost) {
        if (has(HasOtherActivityOrSubsystem))
            fields.subsystem = in.read<std::uint16_t>();
        if (has(HasRules))
            fields.timeToLive = in.read<std::uint8_t>();
        if (has(HasOversize))
            fields.oversizeReference = in.read<std::uint32_t>();
    }
    if (head.kind == RecordKind::Signpost) {
        fields.signpostIdentifier = in.read<std::uint64_t>();
        if (has(HasName)) {
            fields.nameReference = in.read<std::uint32_t>();
            if (has(HasLargeOffset) || source == StringSource::LargeSharedCache)
                fields.nameUpper = in.read<std::uint16_t>();
        }
    }
    if (!in.ok())
        return std::nullopt;
    fields.items = in.rest();
    return fields;
}

} // namespace logstore
