// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/uuid.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

namespace logstore::writer {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// Bytes put together front to back, integers little-endian. Every call returns the builder, so
/// that a structure reads as one chain in the order of its table.
class ByteBuilder
{
public:
    ByteBuilder& u8(std::uint8_t value) { return number(value); }
    ByteBuilder& u16(std::uint16_t value) { return number(value); }
    ByteBuilder& u32(std::uint32_t value) { return number(value); }
    ByteBuilder& u64(std::uint64_t value) { return number(value); }
    ByteBuilder& i32(std::int32_t value) { return number(value); }
    ByteBuilder& i64(std::int64_t value) { return number(value); }

    ByteBuilder& bytes(ByteView view)
    {
        m_bytes.insert(m_bytes.end(), view.begin(), view.end());
        return *this;
    }
    ByteBuilder& uuid(const Uuid& value) { return bytes(value.bytes); }
    ByteBuilder& text(std::string_view value)
    {
        m_bytes.insert(m_bytes.end(), value.begin(), value.end());
        return *this;
    }
    /// The text and its closing zero byte.
    ByteBuilder& cstr(std::string_view value) { return text(value).u8(0); }
    /// The text in a field of `width` bytes, cut so that a closing zero byte always fits.
    ByteBuilder& field(std::string_view value, std::size_t width)
    {
        const auto cut = value.substr(0, width - 1);
        return text(cut).zeros(width - cut.size());
    }
    ByteBuilder& zeros(std::size_t count)
    {
        m_bytes.resize(m_bytes.size() + count);
        return *this;
    }
    /// Zero bytes up to the next multiple of 8, counted from `origin`.
    ByteBuilder& align(std::size_t origin = 0) { return zeros((8 - (size() - origin) % 8) % 8); }

    /// Overwrites what stands at `offset`; for fields that are known only after what follows them.
    template <typename T>
    void put(std::size_t offset, T value)
    {
        static_assert(std::is_integral_v<T>);
        std::memcpy(&m_bytes.at(offset), &value, sizeof value);
    }

    std::size_t size() const { return m_bytes.size(); }
    const Bytes& view() const { return m_bytes; }
    Bytes take() { return std::move(m_bytes); }

private:
    template <typename T>
    ByteBuilder& number(T value)
    {
        std::array<std::uint8_t, sizeof(T)> raw;
        std::memcpy(raw.data(), &value, sizeof value);
        return bytes(raw);
    }

    Bytes m_bytes;
};

} // namespace logstore::writer
