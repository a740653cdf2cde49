// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/constant.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

namespace predicate {

/// The outcome for an entry, or for all entries of which only some fields are known.
enum class Truth : std::uint8_t { False, True, Unknown };

inline Truth truth(bool value)
{
    return value ? Truth::True : Truth::False;
}
inline Truth negation(Truth value)
{
    return value == Truth::Unknown ? value : truth(value == Truth::False);
}

/// The value of an expression for one entry. Texts and lists are views of memory that stays valid
/// until the match is over.
class Value
{
public:
    enum class Kind : std::uint8_t {
        Nil,
        Unknown,  ///< when only some fields of an entry are known
        Integer,  ///< in the range of a signed integer of 64 bits
        Unsigned, ///< above that range
        Real,
        Seconds, ///< a number with nine decimal places, as nanoseconds: exact where a real is not
        Text,
        Uuid,
        Date,
        Symbol, ///< a symbolic value that has no number
        Entry,
        List
    };

    using UuidBytes = std::array<std::uint8_t, 16>;

    constexpr Value() : m_integer(0) {}

    static Value unknown() { return Value(Kind::Unknown, 0); }
    static Value integer(std::int64_t value) { return Value(Kind::Integer, value); }
    static Value unsignedInteger(std::uint64_t value)
    {
        Value out(Kind::Integer, 0);
        out.m_unsigned = value;
        if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            out.m_kind = Kind::Unsigned;
        return out;
    }
    static Value real(double value);                ///< nil when it is not finite
    static Value seconds(std::int64_t nanoseconds); ///< an integer when whole
    static Value text(std::string_view value)
    {
        Value out(Kind::Text, 0);
        out.m_text = value;
        return out;
    }
    static Value uuid(const UuidBytes& bytes)
    {
        Value out(Kind::Uuid, 0);
        out.m_uuid = bytes;
        return out;
    }
    static Value date(std::int64_t nanoseconds) { return Value(Kind::Date, nanoseconds); }
    static Value symbol(int number) { return Value(Kind::Symbol, number); }
    static Value entry() { return Value(Kind::Entry, 0); }
    static Value list(std::span<const Value> elements);

    Kind kind() const { return m_kind; }
    bool isNil() const { return m_kind == Kind::Nil; }
    bool isUnknown() const { return m_kind == Kind::Unknown; }
    bool isText() const { return m_kind == Kind::Text; }
    bool isInteger() const { return m_kind == Kind::Integer || m_kind == Kind::Unsigned; }
    bool isNumber() const { return m_kind >= Kind::Integer && m_kind <= Kind::Seconds; }

    std::int64_t asInteger() const { return m_integer; }
    std::uint64_t asUnsigned() const { return m_unsigned; }
    double asReal() const { return m_real; }
    std::int64_t asNanoseconds() const { return m_integer; }
    std::string_view asText() const { return m_text; }
    const UuidBytes& asUuid() const { return m_uuid; }
    std::span<const Value> asList() const;

private:
    constexpr Value(Kind kind, std::int64_t value) : m_kind(kind), m_integer(value) {}

    struct Elements
    {
        const Value* first;
        std::size_t count;
    };

    Kind m_kind = Kind::Nil;
    union {
        std::int64_t m_integer;
        std::uint64_t m_unsigned;
        double m_real;
        std::string_view m_text;
        UuidBytes m_uuid;
        Elements m_list;
    };
};

inline std::span<const Value> Value::asList() const
{
    return {m_list.first, m_list.count};
}

/// Nil for a list, whose elements are nodes of their own.
Value valueOf(const Constant& constant);

/// The real nearest to the number.
double toReal(const Value& number);

/// Negative, 0 or positive, by mathematical value. Both must be numbers.
int compareNumbers(const Value& left, const Value& right);

} // namespace predicate
