// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <array>

namespace logstore {

/// The upper half of an item's type.
enum class ItemKind : std::uint8_t {
    Number = 0,
    Count = 1,
    Text = 2,
    Data = 3,
    Object = 4,
    WideText = 5,
    ErrorNumber = 6,
    MaskName = 7,
    RecentText = 8, ///< text as recent systems store it
    Masked = 15
};

/// What became of an argument's value.
enum class ItemState : std::uint8_t {
    Whole,
    Cut,       ///< only its beginning was stored, for lack of room
    Redacted,  ///< private, and not stored
    OutOfRange ///< stored at a place that the record does not have
};

/// One argument of a message.
struct Item
{
    std::uint8_t type = 0;
    ItemState state = ItemState::Whole;
    std::uint16_t offset = 0; ///< of the range, when it is out of range
    std::uint16_t size = 0;   ///< of the range, when it is out of range
    std::uint16_t within = 0; ///< size of the area that the range should lie in
    Bytes bytes{}; ///< the value: of a number its bytes, of the others what its range holds

    ItemKind kind() const { return static_cast<ItemKind>(type >> 4); }
    std::uint8_t privacy() const { return type & 15; }
    bool isPrivate() const { return privacy() % 2 != 0; }
    bool isNumber() const { return kind() == ItemKind::Number || kind() == ItemKind::ErrorNumber; }
    bool isText() const
    {
        return kind() == ItemKind::Text || kind() == ItemKind::RecentText
               || kind() == ItemKind::Object;
    }
};

// offset  size  field
//      0     2  offset of the value in its area
//      2     2  size of the value; the top bit marks a value that was cut
struct ItemRange
{
    static constexpr std::uint16_t cutMark = 0x8000;

    explicit ItemRange(Bytes payload)
        : offset(loadAt<std::uint16_t>(payload))
        , size(loadAt<std::uint16_t>(payload, 2) & ~cutMark)
        , isCut((loadAt<std::uint16_t>(payload, 2) & cutMark) != 0)
    {
    }

    std::size_t end() const { return std::size_t{offset} + size; }
    ItemState state() const { return isCut ? ItemState::Cut : ItemState::Whole; }

    std::uint16_t offset;
    std::uint16_t size;
    bool isCut;
};

/// The number in little-endian bytes, as wide as they are; beyond eight they do not count.
inline std::uint64_t unsignedValue(Bytes bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size() < 8 ? bytes.size() : 8; i > 0; --i)
        value = value << 8 | bytes[i - 1];
    return value;
}

inline std::int64_t signedValue(Bytes bytes)
{
    const std::uint64_t value = unsignedValue(bytes);
    const std::size_t bits = bytes.size() * 8;
    if (bits == 0 || bits >= 64 || (value >> (bits - 1) & 1) == 0)
        return static_cast<std::int64_t>(value);
    return static_cast<std::int64_t>(value | ~std::uint64_t{0} << bits);
}

/// Whether a number may be so many bytes long.
inline bool isNumberSize(std::size_t size)
{
    return size == 1 || size == 2 || size == 4 || size == 8;
}

/// The arguments of one record, at most 255.
class Items
{
public:
    /// Reads the items of a log or signpost record. `privateData` is the record's own part of the
    /// private area, empty when it has none.
    void read(Bytes data, Bytes privateData);

    /// Reads the values of a trace record, which stand before their sizes and their count.
    void readTrace(Bytes data);

    void clear() { m_count = 0; }
    std::size_t size() const { return m_count; }
    const Item& operator[](std::size_t i) const { return m_items[i]; }

private:
    std::array<Item, 256> m_items;
    std::size_t m_count = 0;
};

} // namespace logstore
