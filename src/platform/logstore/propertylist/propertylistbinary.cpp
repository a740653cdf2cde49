// SPDX-License-Identifier: MIT
#include "platform/base/utf8.h"
#include "platform/logstore/propertylist/propertylist.h"

namespace logstore {

namespace {

constexpr std::size_t trailerSize = 32;
constexpr std::size_t headSize = 8; // "bplist00"

using Kind = PropertyList::Kind;

/// Objects are a marker byte (type in the upper half, size in the lower) and big-endian content;
/// containers refer to their elements by number, through a table of offsets at the end.
class BinaryReader
{
public:
    BinaryReader(Bytes bytes, TextStore& texts)
        : m_bytes(bytes)
        , m_texts(texts)
        , m_budget(bytes.size())
    {
    }

    bool readTrailer()
    {
        if (m_bytes.size() < headSize + trailerSize)
            return false;
        const Bytes trailer = m_bytes.last(trailerSize);
        m_offsetSize = trailer[6];
        m_referenceSize = trailer[7];
        m_objectCount = bigEndian(trailer.subspan(8, 8));
        m_topObject = bigEndian(trailer.subspan(16, 8));
        m_tableOffset = bigEndian(trailer.subspan(24, 8));
        const std::size_t tableEnd = m_bytes.size() - trailerSize;
        return m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1
               && m_referenceSize <= 8 && m_tableOffset <= tableEnd
               && m_objectCount <= (tableEnd - m_tableOffset) / m_offsetSize;
    }

    bool readTop(PropertyList& into) { return readObject(m_topObject, into, 0); }

private:
    static std::uint64_t bigEndian(Bytes bytes)
    {
        std::uint64_t value = 0;
        for (const std::uint8_t byte : bytes)
            value = value << 8 | byte;
        return value;
    }

    bool readObject(std::uint64_t number, PropertyList& into, int depth)
    {
        if (number >= m_objectCount)
            return false;
        const std::uint64_t offset = bigEndian(m_bytes.subspan(
            static_cast<std::size_t>(m_tableOffset + number * m_offsetSize), m_offsetSize));
        ByteReader in(clipped(m_bytes.first(m_bytes.size() - trailerSize), offset));
        const auto marker = in.read<std::uint8_t>();
        if (!in.ok())
            return false;
        const std::uint8_t low = marker & 15;
        switch (marker >> 4) {
        case 0x0: return readSingleton(marker, into);
        case 0x1: return readInteger(in, low, into);
        case 0x2: return readReal(in, low, into);
        case 0x3: return readDate(in, into);
        case 0x4:
        case 0x5:
        case 0x6: return readText(in, marker >> 4, low, into);
        case 0x8: return readUid(in, low, into);
        case 0xa: return readCollection(in, low, Kind::Array, into, depth);
        case 0xd: return readCollection(in, low, Kind::Dictionary, into, depth);
        default: return false;
        }
    }

    bool readSingleton(std::uint8_t marker, PropertyList& into)
    {
        if (marker != 0x00 && marker != 0x08 && marker != 0x09)
            return false;
        into.kind = marker == 0x00 ? Kind::Null : Kind::Boolean;
        into.integer = marker == 0x09 ? 1 : 0;
        return m_budget.take(0);
    }

    bool readInteger(ByteReader& in, std::uint8_t sizeLog, PropertyList& into)
    {
        if (sizeLog > 4)
            return false;
        const Bytes bytes = in.take(std::uint64_t{1} << sizeLog);
        // Up to four bytes are unsigned, eight are signed, and sixteen carry an unsigned eight.
        into.kind = sizeLog == 3 ? Kind::Integer : Kind::Unsigned;
        into.integer = bigEndian(bytes);
        return in.ok() && m_budget.take(0);
    }

    bool readReal(ByteReader& in, std::uint8_t sizeLog, PropertyList& into)
    {
        into.kind = Kind::Real;
        if (sizeLog == 2)
            into.real = static_cast<double>(
                std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(in.take(4)))));
        else if (sizeLog == 3)
            into.real = std::bit_cast<double>(bigEndian(in.take(8)));
        else
            return false;
        return in.ok() && m_budget.take(0);
    }

    bool readDate(ByteReader& in, PropertyList& into)
    {
        into.kind = Kind::Date;
        into.real = std::bit_cast<double>(bigEndian(in.take(8)));
        return in.ok() && m_budget.take(0);
    }

    bool readUid(ByteReader& in, std::uint8_t low, PropertyList& into)
    {
        into.kind = Kind::Uid;
        into.integer = bigEndian(in.take(std::uint64_t{low} + 1));
        return in.ok() && m_budget.take(0);
    }

    /// A size of 15 says that the size follows as an integer object.
    std::uint64_t readSize(ByteReader& in, std::uint8_t low)
    {
        if (low != 15)
            return low;
        const auto marker = in.read<std::uint8_t>();
        return bigEndian(in.take(marker >> 4 == 1 && (marker & 15) <= 3
                                     ? std::uint64_t{1} << (marker & 15)
                                     : UINT64_MAX));
    }

    bool readText(ByteReader& in, int type, std::uint8_t low, PropertyList& into)
    {
        constexpr int wide = 6;
        constexpr int data = 4;
        const std::uint64_t count = readSize(in, low);
        if (count > in.remaining() || !m_budget.take(count * 3))
            return false;
        const Bytes bytes = in.take(type == wide ? count * 2 : count);
        if (!in.ok())
            return false;
        into.kind = type == data ? Kind::Data : Kind::String;
        const std::string_view plain(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        if (type == data || (type != wide && isValidUtf8(plain))) {
            into.text = plain;
            return true;
        }
        std::string& text = m_texts.emplace_back();
        if (type == wide)
            appendUtf16(text, bytes);
        else
            appendUtf8(text, plain);
        into.text = text;
        return true;
    }

    static void appendUtf16(std::string& out, Bytes bytes)
    {
        for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) {
            auto unit = static_cast<std::uint32_t>(bytes[at] << 8 | bytes[at + 1]);
            if (unit >= 0xd800 && unit < 0xdc00 && at + 4 <= bytes.size()) {
                const auto next = static_cast<std::uint32_t>(bytes[at + 2] << 8 | bytes[at + 3]);
                if (next >= 0xdc00 && next < 0xe000) {
                    unit = 0x10000 + ((unit - 0xd800) << 10) + (next - 0xdc00);
                    at += 2;
                }
            }
            appendCodePoint(out, unit);
        }
    }

    bool readCollection(ByteReader& in, std::uint8_t low, Kind kind, PropertyList& into, int depth)
    {
        const std::uint64_t count = readSize(in, low);
        const bool isDictionary = kind == Kind::Dictionary;
        if (depth >= PropertyList::deepest || count > in.remaining()
            || !m_budget.take(count * sizeof(PropertyList)))
            return false;
        const Bytes keys = isDictionary ? in.take(count * m_referenceSize) : Bytes{};
        const Bytes values = in.take(count * m_referenceSize);
        if (!in.ok())
            return false;
        into.kind = kind;
        into.elements.reserve(static_cast<std::size_t>(count));
        if (isDictionary)
            into.keys.reserve(static_cast<std::size_t>(count));
        for (std::uint64_t i = 0; i < count; ++i) {
            const auto at = static_cast<std::size_t>(i * m_referenceSize);
            if (isDictionary) {
                PropertyList key;
                if (!readObject(bigEndian(keys.subspan(at, m_referenceSize)), key, depth + 1)
                    || key.kind != Kind::String)
                    return false;
                into.keys.push_back(key.text);
            }
            if (!readObject(bigEndian(values.subspan(at, m_referenceSize)),
                            into.elements.emplace_back(), depth + 1))
                return false;
        }
        return true;
    }

    Bytes m_bytes;
    TextStore& m_texts;
    PropertyListBudget m_budget;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::uint64_t m_objectCount = 0;
    std::uint64_t m_topObject = 0;
    std::uint64_t m_tableOffset = 0;
};

} // namespace

std::optional<PropertyList> readBinaryPropertyList(Bytes bytes, TextStore& texts)
{
    BinaryReader reader(bytes, texts);
    PropertyList list;
    if (!reader.readTrailer() || !reader.readTop(list))
        return std::nullopt;
    return list;
}

std::optional<PropertyList> readPropertyList(Bytes bytes, TextStore& texts)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return text.starts_with("bplist0") ? readBinaryPropertyList(bytes, texts)
                                       : readXmlPropertyList(text, texts);
}

} // namespace logstore
