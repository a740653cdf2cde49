// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/message/items.h"
#include "platform/logstore/writer/bytebuilder.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace logstore::writer {

using logstore::ItemKind;

enum class Privacy : std::uint8_t { None = 0, Private = 1, Public = 2, Sensitive = 5 };

/// One argument of a message.
struct Item
{
    enum class Place : std::uint8_t {
        Payload,  ///< the value stands in the item itself
        Values,   ///< the item holds a range of the values area
        Private,  ///< the item holds a range of the private data
        Redacted, ///< the private value was not kept
    };

    std::uint8_t type = 0; ///< kind in the high half, privacy in the low half
    Place place = Place::Payload;
    Bytes value{};
    bool isCut = false; ///< marked as stored in part, for lack of room
};

/// An item whose value stands where kind and privacy want it.
Item item(ItemKind kind, Privacy privacy, Bytes value);

/// A plain number of the size of T; private ones stand in the private data.
template <typename T>
Item number(T value, Privacy privacy = Privacy::None)
{
    Bytes raw(sizeof value);
    std::memcpy(raw.data(), &value, sizeof value);
    return item(ItemKind::Number, privacy, std::move(raw));
}

/// A width, a precision, or the length of the next item.
Item count(std::int32_t value);
/// Text with its closing zero byte.
Item text(std::string_view value, Privacy privacy = Privacy::Public);
Item object(std::string_view value, Privacy privacy = Privacy::Public);
Item wideText(std::u32string_view value, Privacy privacy = Privacy::Public);
Item bytes(ByteView value, Privacy privacy = Privacy::Public);
Item errorNumber(std::int32_t value, Privacy privacy = Privacy::None);
/// How the next item is masked.
Item maskName(std::string_view name);
/// The hash that replaced a value.
Item masked(ByteView hash, Privacy privacy = Privacy::Public);
/// A private argument without its value.
Item redacted(ItemKind kind, Privacy privacy = Privacy::Private);
/// The argument, marked as cut.
Item cut(Item item);
/// Any type with any payload, for items that break the rules.
Item rawItem(std::uint8_t type, Bytes payload);

/// Where a message was sent from: frames are an image's index (0xff = none) and an offset in it.
/// There is none when it has no images.
struct Backtrace
{
    std::vector<Uuid> images{};
    std::vector<std::pair<std::uint8_t, std::uint32_t>> frames{};
};

/// The items as they stand in a record or an oversize chunk.
struct ItemBytes
{
    Bytes publicData{};  ///< summary, count, items, values area
    Bytes privateData{}; ///< what private ranges count from
};

ItemBytes itemBytes(const std::vector<Item>& items, const Backtrace& backtrace = {});

/// The plain numbers of a trace record: values, their sizes, their count.
Bytes traceValueBytes(const std::vector<Item>& items);

} // namespace logstore::writer
