// SPDX-License-Identifier: MIT
#include "platform/base/utf8.h"
#include "platform/logstore/propertylist/propertylist.h"

#include <charconv>
#include <chrono>

namespace logstore {

namespace {

using Kind = PropertyList::Kind;

/// What an element takes in a list that grows: the list is as large again while it is moved.
constexpr std::size_t elementSize = 3 * (sizeof(PropertyList) + sizeof(std::string_view));
/// A byte that is not UTF-8 becomes three.
constexpr std::size_t textGrowth = 3;

struct Tag
{
    std::string_view name;
    bool closing = false;
    bool empty = false;
};

/// Reads the few elements that property lists are made of; attributes and the document type are
/// passed over, entities other than the predefined and numeric ones are none.
class XmlReader
{
public:
    XmlReader(std::string_view xml, TextStore& texts)
        : m_xml(xml)
        , m_texts(texts)
        , m_budget(xml.size())
    {
    }

    bool read(PropertyList& into)
    {
        Tag tag;
        return nextTag(tag) && tag.name == "plist" && !tag.closing && nextTag(tag)
               && readValue(tag, into, 0);
    }

private:
    bool nextTag(Tag& tag)
    {
        for (;;) {
            const std::size_t open = m_xml.find('<', m_at);
            if (open == std::string_view::npos)
                return false;
            const std::string_view rest = m_xml.substr(open);
            const std::string_view terminator = rest.starts_with("<!--") ? "-->" : ">";
            const std::size_t close = m_xml.find(terminator, open);
            if (close == std::string_view::npos)
                return false;
            m_at = close + terminator.size();
            if (rest.starts_with("<?") || rest.starts_with("<!"))
                continue;
            std::string_view inside = m_xml.substr(open + 1, close - open - 1);
            tag.closing = inside.starts_with('/');
            tag.empty = inside.ends_with('/');
            if (tag.closing)
                inside.remove_prefix(1);
            tag.name = inside.substr(0, inside.find_first_of(" \t\r\n/"));
            return true;
        }
    }

    bool readValue(const Tag& tag, PropertyList& into, int depth)
    {
        if (tag.closing)
            return false;
        if (tag.name == "dict" || tag.name == "array")
            return readCollection(tag, into, depth);
        if (tag.name == "true" || tag.name == "false") {
            into.kind = Kind::Boolean;
            into.integer = tag.name == "true" ? 1 : 0;
            return tag.empty || readClosing(tag.name);
        }
        std::string& text = m_texts.emplace_back();
        return readText(tag, text) && convert(tag.name, text, into);
    }

    bool readCollection(const Tag& tag, PropertyList& into, int depth)
    {
        if (depth >= PropertyList::deepest)
            return false;
        const bool isDictionary = tag.name == "dict";
        into.kind = isDictionary ? Kind::Dictionary : Kind::Array;
        if (tag.empty)
            return true;
        Tag inner;
        while (nextTag(inner)) {
            if (inner.closing)
                return inner.name == tag.name;
            if (isDictionary) {
                std::string& key = m_texts.emplace_back();
                if (inner.name != "key" || !readText(inner, key) || !nextTag(inner))
                    return false;
                into.keys.push_back(key);
            }
            if (!m_budget.take(elementSize)
                || !readValue(inner, into.elements.emplace_back(), depth + 1))
                return false;
        }
        return false;
    }

    bool readClosing(std::string_view name)
    {
        Tag tag;
        return nextTag(tag) && tag.closing && tag.name == name;
    }

    bool readText(const Tag& tag, std::string& text)
    {
        if (tag.empty)
            return true;
        for (;;) {
            const std::size_t open = m_xml.find('<', m_at);
            if (open == std::string_view::npos || !m_budget.take((open - m_at) * textGrowth))
                return false;
            appendUnescaped(text, m_xml.substr(m_at, open - m_at));
            constexpr std::string_view section = "<![CDATA[";
            if (!m_xml.substr(open).starts_with(section)) {
                m_at = open;
                return readClosing(tag.name);
            }
            const std::size_t begin = open + section.size();
            const std::size_t end = m_xml.find("]]>", begin);
            if (end == std::string_view::npos || !m_budget.take((end - begin) * textGrowth))
                return false;
            appendUtf8(text, m_xml.substr(begin, end - begin));
            m_at = end + 3;
        }
    }

    static void appendUnescaped(std::string& out, std::string_view text)
    {
        for (std::size_t ampersand = text.find('&'); ampersand != std::string_view::npos;
             ampersand = text.find('&')) {
            appendUtf8(out, text.substr(0, ampersand));
            text.remove_prefix(ampersand);
            constexpr std::size_t longestEntity = 16;
            const std::size_t end = text.substr(0, longestEntity).find(';');
            const std::string_view name =
                text.substr(1, end == std::string_view::npos ? 0 : end - 1);
            if (appendEntity(out, name)) {
                text.remove_prefix(end + 1);
            } else {
                out += '&';
                text.remove_prefix(1);
            }
        }
        appendUtf8(out, text);
    }

    static bool appendEntity(std::string& out, std::string_view name)
    {
        struct Entity
        {
            std::string_view name;
            char value;
        };
        for (const Entity& entity :
             {Entity{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}}) {
            if (name == entity.name) {
                out += entity.value;
                return true;
            }
        }
        if (!name.starts_with('#'))
            return false;
        name.remove_prefix(1);
        const bool hex = name.starts_with('x');
        if (hex)
            name.remove_prefix(1);
        std::uint32_t codePoint = 0;
        const auto [end, error] =
            std::from_chars(name.data(), name.data() + name.size(), codePoint, hex ? 16 : 10);
        if (error != std::errc() || end != name.data() + name.size())
            return false;
        appendCodePoint(out, codePoint);
        return true;
    }

    bool convert(std::string_view name, std::string_view text, PropertyList& into)
    {
        if (name == "string") {
            into.kind = Kind::String;
            into.text = text;
            return true;
        }
        if (name == "integer")
            return convertInteger(text, into);
        if (name == "real") {
            into.kind = Kind::Real;
            return readNumber(withoutPlus(text), into.real);
        }
        if (name == "date")
            return convertDate(text, into);
        if (name == "data")
            return convertData(text, into);
        return false;
    }

    static std::string_view withoutPlus(std::string_view text)
    {
        return text.substr(text.starts_with('+') ? 1 : 0);
    }

    /// The number that makes up the whole text.
    template <typename Number, typename... Base>
    static bool readNumber(std::string_view text, Number& number, Base... base)
    {
        const char* end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number, base...);
        return result.ec == std::errc() && result.ptr == end;
    }

    static bool convertInteger(std::string_view text, PropertyList& into)
    {
        const bool isNegative = text.starts_with('-');
        into.kind = isNegative ? Kind::Integer : Kind::Unsigned;
        if (text.starts_with("0x") || text.starts_with("0X"))
            return readNumber(text.substr(2), into.integer, 16);
        if (!readNumber(isNegative ? text.substr(1) : withoutPlus(text), into.integer))
            return false;
        if (isNegative)
            into.integer = 0 - into.integer;
        return true;
    }

    /// 2011-11-01T12:00:00Z; years outside four digits have more of them, or a minus.
    static bool convertDate(std::string_view text, PropertyList& into)
    {
        constexpr std::string_view shape = "-dd-ddTdd:dd:ddZ"; // from the end of the year on
        if (text.size() < shape.size() + 4)
            return false;
        const std::string_view rest = text.substr(text.size() - shape.size());
        for (std::size_t i = 0; i < shape.size(); ++i)
            if (shape[i] == 'd' ? rest[i] < '0' || rest[i] > '9' : rest[i] != shape[i])
                return false;
        const auto number = [rest](std::size_t at) {
            return (rest[at] - '0') * 10 + (rest[at + 1] - '0');
        };
        using namespace std::chrono;
        int yearNumber = 0;
        if (!readNumber(text.substr(0, text.size() - shape.size()), yearNumber)
            || !isCalendarYear(yearNumber))
            return false;
        const year_month_day day{year(yearNumber), month(static_cast<unsigned>(number(1))),
                                 std::chrono::day(static_cast<unsigned>(number(4)))};
        if (!day.ok())
            return false;
        constexpr sys_days epoch = year(2001) / January / 1;
        const seconds time =
            sys_days(day) - epoch + hours(number(7)) + minutes(number(10)) + seconds(number(13));
        into.kind = Kind::Date;
        into.real = static_cast<double>(time.count());
        return true;
    }

    static bool isCalendarYear(int number)
    {
        return number >= static_cast<int>(std::chrono::year::min())
               && number <= static_cast<int>(std::chrono::year::max());
    }

    bool convertData(std::string_view text, PropertyList& into)
    {
        constexpr std::string_view alphabet =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        into.kind = Kind::Data;
        std::string& data = m_texts.emplace_back();
        std::uint32_t bits = 0;
        int count = 0;
        for (const char c : text) {
            const std::size_t value = alphabet.find(c);
            if (value == std::string_view::npos)
                continue;
            bits = bits << 6 | static_cast<std::uint32_t>(value);
            count += 6;
            if (count >= 8) {
                count -= 8;
                data += static_cast<char>(bits >> count & 0xff);
            }
        }
        into.text = data;
        return true;
    }

    std::string_view m_xml;
    TextStore& m_texts;
    std::size_t m_at = 0;
    PropertyListBudget m_budget;
};

} // namespace

std::optional<PropertyList> readXmlPropertyList(std::string_view xml, TextStore& texts)
{
    PropertyList list;
    if (!XmlReader(xml, texts).read(list))
        return std::nullopt;
    return list;
}

} // namespace logstore
