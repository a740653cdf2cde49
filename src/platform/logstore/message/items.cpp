// SPDX-License-Identifier: MIT
#include "platform/logstore/message/items.h"

namespace logstore {

namespace {

constexpr std::uint8_t publicNumber = 0x02;
constexpr std::uint16_t redactedSize = 0x8000;

bool standsInline(const Item& item)
{
    switch (item.kind()) {
    case ItemKind::Count:
    case ItemKind::MaskName: return true;
    case ItemKind::Number: return item.type == 0x00 || item.type == publicNumber;
    case ItemKind::ErrorNumber: return item.privacy() % 2 == 0;
    default: return false;
    }
}

} // namespace

void Items::read(Bytes data, Bytes privateData, bool hasPrivateData)
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
        m_items[m_count++] = Item{data[at], false, data.subspan(at + 2, size)};
        at += 2 + size;
    }

    const Bytes values = data.subspan(at);
    for (std::size_t i = 0; i < m_count; ++i) {
        Item& item = m_items[i];
        if (standsInline(item) || item.bytes.size() != 4)
            continue;
        const auto offset = loadAt<std::uint16_t>(item.bytes, 0);
        const auto size = loadAt<std::uint16_t>(item.bytes, 2);
        if (item.privacy() % 2 == 0) {
            item.bytes = clipped(values, offset, size);
        } else {
            const bool kept = hasPrivateData && (size & redactedSize) == 0;
            item.bytes = kept ? clipped(privateData, offset, size) : Bytes{};
            item.redacted = item.bytes.empty();
        }
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
        m_items[m_count++] = Item{publicNumber, false, value};
    }
}

} // namespace logstore
