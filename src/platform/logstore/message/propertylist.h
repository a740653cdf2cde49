// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/bytes/bytereader.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace logstore {

/// A property list as state dumps hold them.
struct PropertyList
{
    enum class Kind : std::uint8_t {
        Null,
        Boolean,
        Integer,
        Unsigned,
        Real,
        Date,
        Data,
        String,
        Array,
        Dictionary
    };

    static constexpr int deepest = 64; ///< levels of nesting that are read

    Kind kind = Kind::Null;
    std::uint64_t integer = 0;     ///< of Boolean, Integer (as two's complement) and Unsigned
    double real = 0;               ///< of Real; of Date seconds since 2001-01-01 UTC
    std::string text;              ///< of String valid UTF-8; of Data the bytes
    std::vector<std::string> keys; ///< of Dictionary, one for each element
    std::vector<PropertyList> elements;

    /// Reads the binary or the XML form. Absent when the bytes are neither, are damaged, or would
    /// take memory out of proportion to their number.
    static std::optional<PropertyList> read(Bytes bytes);
};

/// Counts what a property list takes while it is read: shared objects of the binary form can make a
/// few bytes stand for gigabytes.
class PropertyListBudget
{
public:
    explicit PropertyListBudget(std::size_t sourceSize)
        : m_left(sourceSize * 64 + (std::size_t{1} << 20))
    {
    }

    bool take(std::size_t bytes)
    {
        const std::size_t cost = bytes + 64;
        if (cost > m_left)
            return false;
        m_left -= cost;
        return true;
    }

private:
    std::size_t m_left;
};

std::optional<PropertyList> readBinaryPropertyList(Bytes bytes);
std::optional<PropertyList> readXmlPropertyList(std::string_view xml);

/// Appends the list in its descriptive text form: a lone value bare, collections with brackets.
void appendDescription(std::string& out, const PropertyList& list);

} // namespace logstore
