// SPDX-License-Identifier: MIT
#include "platform/logstore/message/items.h"

namespace logstore {

namespace {

constexpr std::uint8_t publicNumber = 0x02;

bool standsInline(const Item& item)
{
    switch (item.kind()) {
    case ItemKind::Count:
    case ItemKind::MaskName: return true;
    case ItemKind::Number: return item.type == 0x00 || item.type == publicNumber;
    case ItemKind::ErrorNumber: return !item.isPrivate();
    default: return false;
    }
}

/// A private value: its bytes as far as they were stored.
Item privateItem(std::uint8_t type, const ItemRange& range, Bytes privateData)
{
    const Bytes bytes = clipped(privateData, range.offset, range.size);
    return {
        .type = type, .state = bytes.empty() ? ItemState::Redacted : range.state(), .bytes = bytes};
}

/// A value outside its area is not clipped: the bytes there are another's.
Item publicItem(std::uint8_t type, const ItemRange& range, Bytes values)
{
    if (range.end() > values.size())
        return {.type = type,
                .state = ItemState::OutOfRange,
                .offset = range.offset,
                .size = range.size,
                .within = static_cast<std::uint16_t>(values.size())};
    return {
        .type = type, .state = range.state(), .bytes = values.subspan(range.offset, range.size)};
}

} // namespace

void Items::read(Bytes data, Bytes privateData)
{
    m_count = 0;
    if (data.size() < 2)
        return;
    const std::size_t count = data[1];
    std::size_t at = 2;
    while (m_count < count && data.size() - at >= 2) {
        const std::size_t size = data[at + 1];
        if (data.size() - at - 2 < size)
            break;
        m_items[m_count++] = Item{.type = data[at], .bytes = data.subspan(at + 2, size)};
        at += 2 + size;
    }

    const Bytes values = data.subspan(at);
    for (std::size_t i = 0; i < m_count; ++i) {
        Item& item = m_items[i];
        if (standsInline(item) || item.bytes.size() != 4)
            continue;
        const ItemRange range(item.bytes);
        item = item.isPrivate() ? privateItem(item.type, range, privateData)
                                : publicItem(item.type, range, values);
    }
}

void Items::readTrace(Bytes data)
{
    m_count = 0;
    if (data.empty())
        return;
    const std::size_t count = data.back();
    if (count + 1 > data.size())
        return;
    const Bytes sizes = data.subspan(data.size() - 1 - count, count);
    ByteReader values(data.subspan(0, data.size() - 1 - count));
    for (const std::uint8_t size : sizes) {
        const Bytes value = values.take(size);
        if (!values.ok())
            return;
        m_items[m_count++] = Item{.type = publicNumber, .bytes = value};
    }
}

} // namespace logstore
