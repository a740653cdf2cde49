// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/field.h"
#include "platform/predicate/matching/value.h"

#include <optional>

namespace predicate {

/// An entry as a predicate sees it. A match reads each field at most once, and only when the
/// outcome depends on it.
///
/// Implementations return what the record holds. The predicate itself knows which kinds carry which
/// fields, and reads no others. It takes empty texts (except for the message) and UUIDs of zeros
/// for nil. For an entry of kind Other it reads any field, and the answer is nil when there is
/// none.
class EntryFields
{
public:
    virtual ~EntryFields() = default;

    /// No value when the fields are those of several entries, which may be of several kinds.
    virtual std::optional<EntryKind> kind() const = 0;

    /// Texts are valid UTF-8, and valid until the match is over. Symbolic fields are given as their
    /// numbers. Value::unknown() is allowed only in Matcher::possible().
    virtual Value field(Field field) const = 0;
};

/// An entry of which nothing is known, to evaluate what is the same for every entry.
class AnyEntry : public EntryFields
{
public:
    std::optional<EntryKind> kind() const override { return std::nullopt; }
    Value field(Field) const override { return Value::unknown(); }
};

} // namespace predicate
