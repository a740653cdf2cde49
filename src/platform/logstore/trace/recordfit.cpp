// SPDX-License-Identifier: MIT
#include "platform/logstore/trace/recordfit.h"

#include "platform/logstore/message/items.h"

#include <algorithm>

namespace logstore {

namespace {

bool isMarked(std::uint64_t activity)
{
    return activity == 0 || withoutMarker(activity) != activity;
}

bool holdsNumber(const Item& item)
{
    return item.isNumber() && !item.isPrivate();
}

bool isSound(const Item& item)
{
    const bool knownKind = item.kind() <= ItemKind::RecentText || item.kind() == ItemKind::Masked;
    const unsigned privacy = item.privacy();
    if (!knownKind || (privacy > 2 && privacy != 5))
        return false;
    if (holdsNumber(item))
        return isNumberSize(item.bytes.size());
    return item.bytes.size() == (item.kind() == ItemKind::MaskName ? 8 : 4);
}

bool isPublicRange(const Item& item)
{
    return !item.isPrivate() && !holdsNumber(item) && item.kind() != ItemKind::Count
           && item.kind() != ItemKind::MaskName;
}

/// Of a summary byte, a count, so many items (type, size, payload) and the values of their ranges.
Fit fitOfItems(Bytes data, std::size_t spare)
{
    ByteReader in(data);
    in.skip(1);
    std::size_t end = 0; // of the ranges
    for (unsigned left = in.read<std::uint8_t>(); left > 0 && in.ok(); --left) {
        Item item;
        item.type = in.read<std::uint8_t>();
        item.bytes = in.take(in.read<std::uint8_t>());
        if (!isSound(item))
            return Fit::None;
        if (isPublicRange(item))
            end = std::max(end, ItemRange(item.bytes).end());
    }
    if (!in.ok() || end > in.remaining())
        return Fit::None;
    const std::size_t over = in.remaining() - end;
    return over == 0 || over == spare ? Fit::Exact : Fit::Possible;
}

} // namespace

Fit fitOf(const RecordHead& head, const RecordFields& fields, std::size_t spare)
{
    const bool isActivity = head.kind == RecordKind::Activity;
    if (!isActivity && (head.flags & HasOversize) == 0)
        return fitOfItems(fields.items, spare);
    if (isActivity
        && !(isMarked(fields.currentActivity) && isMarked(fields.otherActivity)
             && isMarked(fields.newActivity)))
        return Fit::None;
    const std::size_t over = fields.items.size();
    return over == 0 || over == spare ? Fit::Exact : Fit::None;
}

} // namespace logstore
