// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/entryfields.h"

#include <deque>
#include <map>
#include <optional>
#include <string>

/// An entry made up of named values; what it was not given is nil.
class MadeUpEntry : public predicate::EntryFields
{
public:
    explicit MadeUpEntry(predicate::EntryKind kind = predicate::EntryKind::Log) : m_kind(kind) {}

    // The values point into the texts, which moving leaves where they are.
    MadeUpEntry(MadeUpEntry&&) = default;
    MadeUpEntry& operator=(MadeUpEntry&&) = default;
    MadeUpEntry(const MadeUpEntry&) = delete;
    MadeUpEntry& operator=(const MadeUpEntry&) = delete;
    ~MadeUpEntry() override = default;

    void set(predicate::Field field, const predicate::Value& value)
    {
        using predicate::Value;
        m_values[field] =
            value.isText() ? Value::text(m_texts.emplace_back(value.asText())) : value;
    }

    std::optional<predicate::EntryKind> kind() const override { return m_kind; }
    predicate::Value field(predicate::Field field) const override
    {
        const auto found = m_values.find(field);
        return found == m_values.end() ? predicate::Value() : found->second;
    }

private:
    predicate::EntryKind m_kind;
    std::map<predicate::Field, predicate::Value> m_values;
    std::deque<std::string> m_texts;
};

/// An entry of which only some fields are told.
class PartOfEntry : public predicate::EntryFields
{
public:
    PartOfEntry(const MadeUpEntry& entry, const predicate::Fields& known)
        : m_entry(entry)
        , m_known(known)
    {
    }

    std::optional<predicate::EntryKind> kind() const override { return std::nullopt; }
    predicate::Value field(predicate::Field field) const override
    {
        return m_known[static_cast<std::size_t>(field)] ? m_entry.field(field)
                                                        : predicate::Value::unknown();
    }

private:
    const MadeUpEntry& m_entry;
    predicate::Fields m_known;
};
