// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"
#include "platform/predicate/matching/entryfields.h"
#include "platform/predicate/syntax/constant.h"

#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

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

    void set(predicate::Field field, const predicate::Value& value);

    std::optional<predicate::EntryKind> kind() const override { return m_kind; }
    predicate::Value field(predicate::Field field) const override;

private:
    predicate::EntryKind m_kind;
    std::map<predicate::Field, predicate::Value> m_values;
    std::deque<std::string> m_texts;
};

/// One line of a case file: a predicate and what must come of it.
struct PredicateCase
{
    std::string id;
    std::string predicate;
    predicate::Arguments arguments;
    std::int64_t now = 0;

    MadeUpEntry entry;
    std::optional<bool> matches; ///< what it must be for the entry
    std::string errorStage;      ///< "parse" or "bind" when it must fail
    std::optional<std::size_t> errorPosition;
    std::optional<bool> binds; ///< instead of an entry: it must parse, and bind or not
};

/// The cases of a file with a JSON object in each line.
Result<std::vector<PredicateCase>> readPredicateCases(const std::filesystem::path& file);

/// What came instead of what had to, or an empty text when the case holds.
std::string shortfall(const PredicateCase& predicateCase);
