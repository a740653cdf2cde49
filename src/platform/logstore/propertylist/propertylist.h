// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logstore {

/// A property list, read from bytes that nobody vouches for.
struct PropertyList
{
    enum class Kind : std::uint8_t {
        Null,
        Boolean,
        Integer,
        Unsigned,
        Uid, ///< a reference within a keyed archive
        Real,
        Date,
        Data,
        String,
        Array,
        Dictionary
    };

    static constexpr int deepest = 64; ///< levels of collections that are read

    Kind kind = Kind::Null;
    std::uint64_t integer = 0; ///< of Boolean, Integer (as two's complement), Unsigned and Uid
    double real = 0;           ///< of Real; of Date seconds since 2001-01-01 UTC
    std::string_view text;     ///< of String valid UTF-8; of Data the bytes
    std::vector<std::string_view> keys; ///< of Dictionary, one for each element
    std::vector<PropertyList> elements;
};

/// Texts that do not stand in the source as they are read.
using TextStore = std::deque<std::string>;

/// Reads the binary or the XML form. The texts point into `bytes` or into `texts`. Absent when the
/// bytes are neither, are damaged, or would take memory out of proportion to their number.
std::optional<PropertyList> readPropertyList(Bytes bytes, TextStore& texts);

/// Counts the memory that a property list takes while it is read. Shared objects of the binary form
/// can make a few bytes stand for gigabytes, and a large source of short values can take a hundred
/// times its size. The description of a list is at most twice as long as what it takes here: an
/// element is charged half of the deepest indentation at least, a character half of its escape.
class PropertyListBudget
{
public:
    explicit PropertyListBudget(std::size_t sourceSize)
        : m_left(std::min(base + std::min(sourceSize, most) * perByte, most))
    {
    }

    /// Takes the bytes of one value. False when there is no room for it.
    bool take(std::size_t bytes)
    {
        constexpr std::size_t ofText = 64; ///< beside its characters
        const std::size_t cost = bytes + ofText;
        if (cost > m_left)
            return false;
        m_left -= cost;
        return true;
    }

private:
    static constexpr std::size_t base = std::size_t{1} << 20;
    static constexpr std::size_t most = std::size_t{16} << 20;
    static constexpr std::size_t perByte = 256;

    std::size_t m_left;
};

std::optional<PropertyList> readBinaryPropertyList(Bytes bytes, TextStore& texts);
std::optional<PropertyList> readXmlPropertyList(std::string_view xml, TextStore& texts);

} // namespace logstore
