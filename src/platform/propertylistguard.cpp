// SPDX-License-Identifier: MIT
#include "platform/propertylistguard.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace {

constexpr std::uint64_t largestSize = 4ULL * 1024 * 1024;
/// No nesting can be deeper than the number of containers, so this bounds the parser's recursion.
constexpr std::uint64_t mostContainers = 5'000;

/// The big-endian number of `width` bytes at an offset, unless it reaches past the end.
std::optional<std::uint64_t>
numberAt(QByteArrayView bytes, std::uint64_t offset, std::uint64_t width)
{
    const auto size = static_cast<std::uint64_t>(bytes.size());
    if (width == 0 || width > 8 || width > size || offset > size - width)
        return std::nullopt;
    std::uint64_t number = 0;
    for (std::uint64_t index = offset; index < offset + width; ++index)
        number = number << 8U | static_cast<std::uint8_t>(bytes[static_cast<qsizetype>(index)]);
    return number;
}

// The last 32 bytes of the binary form:
// offset  size  field
//      6     1  width of an entry of the offset table
//      7     1  width of a reference to an object
//      8     8  number of objects
//     16     8  number of the outermost object
//     24     8  offset of the offset table: for each object, where it starts
struct BinaryList
{
    QByteArrayView bytes;
    std::uint64_t offsetWidth;
    std::uint64_t referenceWidth;
    std::uint64_t objects;
    std::uint64_t offsetTable;
};

constexpr std::uint64_t trailerSize = 32;

std::optional<BinaryList> binaryList(QByteArrayView bytes)
{
    const auto size = static_cast<std::uint64_t>(bytes.size());
    if (size < trailerSize)
        return std::nullopt;
    const std::uint64_t trailer = size - trailerSize;
    const auto offsetWidth = numberAt(bytes, trailer + 6, 1);
    const auto referenceWidth = numberAt(bytes, trailer + 7, 1);
    const auto objects = numberAt(bytes, trailer + 8, 8);
    const auto offsetTable = numberAt(bytes, trailer + 24, 8);
    if (!offsetWidth || !referenceWidth || !objects || !offsetTable || *objects > size
        || *offsetTable >= size)
        return std::nullopt;
    return BinaryList{bytes, *offsetWidth, *referenceWidth, *objects, *offsetTable};
}

// An object starts with a byte of its type and a count: 0x4… data, 0x5… and 0x6… text, 0xA… array,
// 0xD… dictionary (as many keys, then as many values). A count of fifteen says that the true one
// follows, as an integer object: 0x1n and 2^n bytes. All other objects are some bytes long.
struct Object
{
    bool isContainer = false;
    std::uint64_t first = 0; ///< offset of the first reference or character
    std::uint64_t count = 0;
};

/// Nothing when the object reaches past the end.
std::optional<Object> objectAt(const BinaryList& list, std::uint64_t number)
{
    const std::uint64_t entry = list.offsetTable + number * list.offsetWidth;
    const auto start = numberAt(list.bytes, entry, list.offsetWidth);
    const auto marker = start ? numberAt(list.bytes, *start, 1) : std::nullopt;
    if (!marker)
        return std::nullopt;
    const std::uint64_t type = *marker & 0xF0U;
    const bool isContainer = type == 0xA0U || type == 0xD0U;
    if (!isContainer && (type < 0x40U || type > 0x70U))
        return Object{};
    Object object{isContainer, *start + 1, *marker & 0x0FU};
    if (object.count == 0x0FU) {
        const auto width = numberAt(list.bytes, *start + 1, 1);
        const std::uint64_t bytes = std::uint64_t{1} << (width.value_or(0) & 0x0FU);
        const auto count = numberAt(list.bytes, *start + 2, bytes);
        if (!count || *count > static_cast<std::uint64_t>(list.bytes.size()))
            return std::nullopt;
        object = {isContainer, *start + 2 + bytes, *count};
    }
    if (type == 0xD0U)
        object.count *= 2;
    return object;
}

/// Follows every reference once, and counts what the parser will make of it.
class Walk
{
public:
    explicit Walk(const BinaryList& list) : m_list(list), m_isHeld(list.objects) {}

    /// Whether no container is held by two others, or twice by one, and all of it stays small.
    bool isSafe()
    {
        for (std::uint64_t number = 0; number < m_list.objects; ++number) {
            const auto object = objectAt(m_list, number);
            if (!object)
                return false;
            if (object->isContainer && (++m_containers > mostContainers || !holdsOnce(*object)))
                return false;
        }
        return true;
    }

private:
    bool holdsOnce(const Object& container)
    {
        for (std::uint64_t index = 0; index < container.count; ++index) {
            const std::uint64_t at = container.first + index * m_list.referenceWidth;
            const auto number = numberAt(m_list.bytes, at, m_list.referenceWidth);
            const auto held =
                number && *number < m_list.objects ? objectAt(m_list, *number) : std::nullopt;
            if (!held || (held->isContainer && m_isHeld[*number]))
                return false;
            m_isHeld[*number] = true;
            m_copied += 1 + (held->isContainer ? 0 : held->count);
            if (m_copied > largestSize)
                return false;
        }
        return true;
    }

    const BinaryList& m_list;
    std::vector<bool> m_isHeld;
    std::uint64_t m_containers = 0;
    std::uint64_t m_copied = 0;
};

} // namespace

bool isSafePropertyList(QByteArrayView bytes)
{
    if (static_cast<std::uint64_t>(bytes.size()) > largestSize)
        return false;
    if (bytes.startsWith("bplist")) {
        const auto list = binaryList(bytes);
        return list && Walk(*list).isSafe();
    }
    const auto containers = bytes.count("<array") + bytes.count("<dict");
    return static_cast<std::uint64_t>(containers) <= mostContainers;
}
