// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/entryfields.h"
#include "platform/predicate/predicateerror.h"
#include "platform/predicate/syntax/constant.h"
#include "platform/predicate/syntax/tree.h"
#include "platform/predicate/text/datetext.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <tl/expected.hpp>

/// The predicate language, in which users say which log entries they want.
///
/// A text is parsed to a tree, which knows no fields; the tree is bound to the fields of log
/// entries, which checks types and compiles it; the predicate is then asked about entries. Only the
/// first two steps can fail.
namespace predicate {

class Condition;
class Match;

/// Settings of the environment, fixed when a predicate is built.
struct BuildSettings
{
    std::int64_t now = 0; ///< of now(), in nanoseconds since 1970 UTC
    UtcOffset utcOffset;  ///< the user's time zone, for dates written without one; UTC when empty
};

/// A checked and compiled predicate. Immutable: copies share it.
class Predicate
{
public:
    Predicate(std::shared_ptr<const Condition> condition, const Fields& fields)
        : m_condition(std::move(condition))
        , m_fields(fields)
    {
    }

    /// Whether the outcome can depend on the field.
    bool looksAt(Field field) const { return m_fields[static_cast<std::size_t>(field)]; }

private:
    friend class Matcher;
    std::shared_ptr<const Condition> m_condition;
    Fields m_fields;
};

/// Parses a format text (UTF-8), with values for its format arguments.
tl::expected<Tree, PredicateError> parse(std::string_view formatText,
                                         const Arguments& arguments = {});

tl::expected<Predicate, PredicateError> bind(const Tree& tree, const BuildSettings& settings = {});

/// Parses and binds.
tl::expected<Predicate, PredicateError> build(std::string_view formatText,
                                              const Arguments& arguments = {},
                                              const BuildSettings& settings = {});

/// Matches entries one after the other. It has working memory, so each thread needs its own.
class Matcher
{
public:
    explicit Matcher(Predicate predicate);
    Matcher(Matcher&&) noexcept;
    Matcher& operator=(Matcher&&) noexcept;
    Matcher(const Matcher&) = delete;
    Matcher& operator=(const Matcher&) = delete;
    ~Matcher();

    bool matches(const EntryFields& entry);

    /// False only when no entry with these fields can match, whatever its other fields are, for
    /// which `known` answers Value::unknown().
    bool possible(const EntryFields& known);

    /// Whether a regular expression has run out of time for an entry, which then did not match it.
    bool gaveUp() const;

private:
    Predicate m_predicate;
    std::unique_ptr<Match> m_match;
};

} // namespace predicate
