// SPDX-License-Identifier: MIT
#include "platform/logstore/writer/items.h"

namespace logstore::writer {

namespace {

constexpr std::uint8_t hasPrivateItems = 1;
constexpr std::uint8_t hasOtherThanNumbers = 2;

Bytes withZero(std::string_view text)
{
    return ByteBuilder().cstr(text).take();
}

bool isPrivate(const Item& item)
{
    return (item.type & 1) != 0;
}

std::uint8_t summary(const std::vector<Item>& items)
{
    std::uint8_t bits = 0;
    for (const Item& item : items) {
        if (isPrivate(item))
            bits |= hasPrivateItems;
        if (item.type >> 4 != 0)
            bits |= hasOtherThanNumbers;
    }
    return bits;
}

Bytes backtraceBytes(const Backtrace& backtrace)
{
    const auto& frames = backtrace.frames;
    ByteBuilder out;
    out.u16(1).u8(0x12).u8(static_cast<std::uint8_t>(backtrace.images.size()));
    out.u16(static_cast<std::uint16_t>(frames.size()));
    for (const Uuid& image : backtrace.images)
        out.uuid(image);
    for (const auto& [image, offset] : frames)
        out.u32(offset);
    for (const auto& [image, offset] : frames)
        out.u8(image);
    return out.zeros((4 - frames.size() % 4) % 4).take();
}

void appendRange(ByteBuilder& out, ByteBuilder& area, const Item& item)
{
    constexpr unsigned cutMark = 0x8000;
    out.u16(static_cast<std::uint16_t>(item.value.empty() ? 0 : area.size()));
    out.u16(static_cast<std::uint16_t>(item.value.size() | (item.isCut ? cutMark : 0)));
    area.bytes(item.value);
}

} // namespace

Item item(ItemKind kind, Privacy privacy, Bytes value)
{
    const auto type = static_cast<std::uint8_t>(static_cast<unsigned>(kind) << 4
                                                | static_cast<unsigned>(privacy));
    const bool secret = privacy == Privacy::Private || privacy == Privacy::Sensitive;
    const bool isNumber = kind == ItemKind::Number || kind == ItemKind::ErrorNumber;
    auto place = Item::Place::Values;
    if (kind == ItemKind::Count || kind == ItemKind::MaskName || (isNumber && !secret))
        place = Item::Place::Payload;
    else if (secret)
        place = Item::Place::Private;
    return {type, place, std::move(value), false};
}

Item count(std::int32_t value)
{
    return item(ItemKind::Count, Privacy::None, ByteBuilder().i32(value).take());
}

Item text(std::string_view value, Privacy privacy)
{
    return item(ItemKind::Text, privacy, withZero(value));
}

Item object(std::string_view value, Privacy privacy)
{
    return item(ItemKind::Object, privacy, withZero(value));
}

Item wideText(std::u32string_view value, Privacy privacy)
{
    ByteBuilder out;
    for (const char32_t unit : value)
        out.u32(unit);
    return item(ItemKind::WideText, privacy, out.u32(0).take());
}

Item bytes(ByteView value, Privacy privacy)
{
    return item(ItemKind::Data, privacy, Bytes(value.begin(), value.end()));
}

Item errorNumber(std::int32_t value, Privacy privacy)
{
    return item(ItemKind::ErrorNumber, privacy, ByteBuilder().i32(value).take());
}

Item maskName(std::string_view name)
{
    return item(ItemKind::MaskName, Privacy::Public, ByteBuilder().field(name, 8).take());
}

Item masked(ByteView hash, Privacy privacy)
{
    return item(ItemKind::Masked, privacy, Bytes(hash.begin(), hash.end()));
}

Item redacted(ItemKind kind, Privacy privacy)
{
    Item result = item(kind, privacy, {});
    result.place = Item::Place::Redacted;
    return result;
}

Item cut(Item item)
{
    item.isCut = true;
    return item;
}

Item rawItem(std::uint8_t type, Bytes payload)
{
    return {type, Item::Place::Payload, std::move(payload), false};
}

ItemBytes itemBytes(const std::vector<Item>& items, const Backtrace& backtrace)
{
    ByteBuilder heads;
    ByteBuilder values;
    ByteBuilder secrets;
    if (!backtrace.images.empty())
        values.bytes(backtraceBytes(backtrace));
    heads.u8(summary(items)).u8(static_cast<std::uint8_t>(items.size()));
    for (const Item& item : items) {
        const bool inside = item.place == Item::Place::Payload;
        heads.u8(item.type).u8(inside ? static_cast<std::uint8_t>(item.value.size()) : 4);
        switch (item.place) {
        case Item::Place::Payload: heads.bytes(item.value); break;
        case Item::Place::Values: appendRange(heads, values, item); break;
        case Item::Place::Private: appendRange(heads, secrets, item); break;
        case Item::Place::Redacted: heads.u16(0).u16(0); break;
        }
    }
    return {heads.bytes(values.view()).take(), secrets.take()};
}

Bytes traceValueBytes(const std::vector<Item>& items)
{
    ByteBuilder out;
    for (const Item& item : items)
        out.bytes(item.value);
    for (const Item& item : items)
        out.u8(static_cast<std::uint8_t>(item.value.size()));
    return out.u8(static_cast<std::uint8_t>(items.size())).take();
}

} // namespace logstore::writer
