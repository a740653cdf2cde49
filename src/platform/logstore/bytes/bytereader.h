// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

namespace logstore {

static_assert(std::endian::native == std::endian::little,
              "the store is little-endian, and so is the reader");

using Bytes = std::span<const std::uint8_t>;

/// The part of `bytes` that starts at `offset` and has at most `size` bytes; empty when it starts
/// past the end. Nothing is ever added to an offset, so no sum can overflow.
inline Bytes clipped(Bytes bytes, std::uint64_t offset, std::uint64_t size = UINT64_MAX)
{
    if (offset >= bytes.size())
        return {};
    const std::uint64_t left = bytes.size() - offset;
    return bytes.subspan(static_cast<std::size_t>(offset),
                         static_cast<std::size_t>(size < left ? size : left));
}

/// A value of any size at the front of `bytes`; 0 when they are too few.
template <typename T>
T loadAt(Bytes bytes, std::size_t offset = 0)
{
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    if (offset <= bytes.size() && bytes.size() - offset >= sizeof(T))
        std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

/// The bytes up to the first zero byte, or all of them, as text.
inline std::string_view cString(Bytes bytes)
{
    const auto* text = reinterpret_cast<const char*>(bytes.data());
    return {text, bytes.empty() ? 0 : strnlen(text, bytes.size())};
}

/// A cursor over bytes with a sticky failure: after the first read that goes past the end every
/// further one gives zero, so a whole structure can be read straight through and checked once.
class ByteReader
{
public:
    explicit ByteReader(Bytes bytes) : m_bytes(bytes) {}

    template <typename T>
    T read()
    {
        static_assert(std::is_trivially_copyable_v<T>);
        T value{};
        if (remaining() < sizeof(T)) {
            fail();
            return value;
        }
        std::memcpy(&value, m_bytes.data() + m_offset, sizeof(T));
        m_offset += sizeof(T);
        return value;
    }

    Bytes take(std::uint64_t size)
    {
        if (remaining() < size) {
            fail();
            return {};
        }
        const Bytes taken = m_bytes.subspan(m_offset, static_cast<std::size_t>(size));
        m_offset += static_cast<std::size_t>(size);
        return taken;
    }

    void skip(std::uint64_t size) { take(size); }

    /// Goes forward to the next multiple of 8, or to the end when that comes first.
    void align8()
    {
        const std::size_t padding = (8 - m_offset % 8) % 8;
        m_offset += padding < remaining() ? padding : remaining();
    }

    bool ok() const { return m_ok; }
    std::size_t offset() const { return m_offset; }
    std::size_t remaining() const { return m_bytes.size() - m_offset; }
    Bytes rest() const { return m_bytes.subspan(m_offset); }

private:
    void fail()
    {
        m_ok = false;
        m_offset = m_bytes.size();
    }

    Bytes m_bytes;
    std::size_t m_offset = 0;
    bool m_ok = true;
};

} // namespace logstore
