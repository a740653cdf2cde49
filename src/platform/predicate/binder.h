// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/conditions.h"
#include "platform/predicate/fieldtable.h"
#include "platform/predicate/functions.h"
#include "platform/predicate/predicate.h"
#include "platform/predicate/terms.h"

#include <optional>
#include <string>
#include <tl/expected.hpp>

namespace predicate {

/// Tree to compiled conditions: resolves names, checks types, works out what is constant. From left
/// to right; the first failure is kept, and what comes after it is bound to no effect.
class Binder
{
public:
    Binder(const Tree& tree, const BuildSettings& settings) : m_tree(tree), m_settings(settings) {}

    tl::expected<ConditionPtr, PredicateError> run();
    /// Those that the conditions look at.
    const Fields& fields() const { return m_fields; }

private:
    /// How words and texts are read beside what they are compared with.
    struct Reading
    {
        Types symbols = type::nil;  ///< names of this symbolic type have values
        bool typeIsLogType = false; ///< the name `type` means the message type
        bool dates = false;         ///< texts are dates
        const Node* text = nullptr; ///< is probably a text without quotes if a name is unknown

        Reading onlyText() const { return {type::nil, false, false, text}; }
    };

    // Conditions (binder.cpp).
    ConditionPtr condition(const Node& node);
    ConditionPtr compound(const Node& node);

    // Comparisons (comparisonbinder.cpp).
    struct Sides
    {
        TermPtr left;
        TermPtr right;
    };
    ConditionPtr comparison(const Node& node);
    Sides bindSides(const Node& node);
    void readDates(const Node& node, Sides& sides);

    // What they become (comparisoncompiler.cpp).
    ConditionPtr quantified(const Node& node, const Sides& sides);
    ConditionPtr compiled(const Node& node, const TermPtr& left, const TermPtr& right);
    ConditionPtr mixedMembership(const Node& node, const TermPtr& left, const TermPtr& right);
    ConditionPtr
    compiledMatches(const Node& node, const TermPtr& left, const TermPtr& right, Folding folding);

    // Types of the sides (comparisontypes.cpp).
    void checkLeft(const Node& node, const Term& left);
    void checkSides(const Node& node, const Sides& sides);
    bool checkBounds(const Node& node, const Term& right);

    // Expressions (termbinder.cpp).
    TermPtr term(const Node& node, Reading reading);
    TermPtr term(const Node& node) { return term(node, Reading{}); }
    TermPtr constant(const Node& node, Reading reading);
    TermPtr name(const Node& node, Reading reading);
    TermPtr field(const std::string& name, std::size_t position, Reading reading);
    TermPtr list(const Node& node, Reading reading);
    TermPtr chain(const Node& node, Reading reading);
    TermPtr negation(const Node& node);
    TermPtr ternary(const Node& node);
    Terms terms(const std::vector<Node>& nodes, Reading reading);
    Terms terms(const std::vector<Node>& nodes) { return terms(nodes, Reading{}); }

    // Paths, calls and casts (callbinder.cpp).
    TermPtr path(const Node& node, Reading reading);
    TermPtr member(const Node& path, TermPtr base, const Node& member);
    ElementTerm::Place place(const Node& index);
    TermPtr element(const Node& path, TermPtr base, std::size_t& next);
    TermPtr call(const Node& node);
    TermPtr listCall(const Node& node, const FunctionInfo& function);
    TermPtr cast(const Node& node);
    TermPtr
    castTo(const Node& node, TermPtr operand, Types from, Types to, CallTerm::Function function);

    // Failures.
    void fail(std::size_t position, std::string sentence);
    TermPtr failedTerm(std::size_t position, std::string sentence);
    bool failed() const { return m_error.has_value(); }
    std::string source(const Node& node) const;
    std::string sourceIs(const Node& node, Types types) const;

    const Tree& m_tree;
    const BuildSettings& m_settings;
    Fields m_fields;
    std::optional<PredicateError> m_error;
};

/// The type of a value that is known.
Type typeOf(const Value& value);

} // namespace predicate
