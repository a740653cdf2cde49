// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/field.h"
#include "platform/predicate/matching/value.h"

#include <optional>

namespace predicate {

/// An entry as a predicate sees it. Each field is asked for at most once in a match, and only when
/// the outcome hangs on it.
///
/// The predicate knows which kinds of entries carry which fields, and that an empty text (but for
/// the message's) and a UUID of zeros are nil: a reader simply tells what its record holds. It is
/// not asked for a field that the entry's kind does not carry. Of an entry of another kind it is
/// asked for everything and answers nil to what it does not know.
class EntryFields
{
public:
    virtual ~EntryFields() = default;

    /// None when entries of several kinds are spoken of: then field() tells what holds for all of
    /// them.
    virtual std::optional<EntryKind> kind() const = 0;

    /// Texts are valid UTF-8 and stay where they are until the match is over. Symbolic fields are
    /// their numbers (EventType for `type`). Value::unknown() is an answer only to
    /// Matcher::possible().
    virtual Value field(Field field) const = 0;
};

/// Nothing is known of it: for what is the same for every entry.
class AnyEntry : public EntryFields
{
public:
    std::optional<EntryKind> kind() const override { return std::nullopt; }
    Value field(Field) const override { return Value::unknown(); }
};

} // namespace predicate
