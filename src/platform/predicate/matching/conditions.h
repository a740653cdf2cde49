// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/comparing.h"
#include "platform/predicate/matching/regexshortcut.h"
#include "platform/predicate/matching/term.h"
#include "platform/predicate/text/textpattern.h"

#include <memory>
#include <string>
#include <vector>

namespace predicate {

/// A compiled test of an entry.
class Condition
{
public:
    explicit Condition(int cost) : m_cost(cost) {}
    virtual ~Condition() = default;
    Condition(const Condition&) = delete;
    Condition& operator=(const Condition&) = delete;
    Condition(Condition&&) = delete;
    Condition& operator=(Condition&&) = delete;

    virtual Truth evaluate(Match& match) const = 0;
    int cost() const { return m_cost; }

private:
    int m_cost;
};

/// The outcome for an entry of which nothing is known.
Truth outcomeForAll(const Condition& condition);

using ConditionPtr = std::unique_ptr<const Condition>;
using Conditions = std::vector<ConditionPtr>;

/// True or false for every entry.
class FixedCondition : public Condition
{
public:
    explicit FixedCondition(bool value) : Condition(0), m_value(value) {}
    Truth evaluate(Match&) const override { return truth(m_value); }

private:
    bool m_value;
};

class NotCondition : public Condition
{
public:
    explicit NotCondition(ConditionPtr inner) : Condition(inner->cost()), m_inner(std::move(inner))
    {
    }
    Truth evaluate(Match& match) const override { return negation(m_inner->evaluate(match)); }

private:
    ConditionPtr m_inner;
};

/// AND, OR. Evaluates the cheapest parts first, and stops when the outcome is known.
class CompoundCondition : public Condition
{
public:
    enum class Joint { And, Or };

    CompoundCondition(Joint joint, Conditions parts);
    Truth evaluate(Match& match) const override;

private:
    Truth m_decisive; ///< a part with this outcome decides the whole
    Conditions m_parts;
};

class ComparisonCondition : public Condition
{
public:
    ComparisonCondition(Operator comparison, TermPtr left, TermPtr right, Folding folding);
    Truth evaluate(Match& match) const override;

private:
    Operator m_comparison;
    TermPtr m_left;
    TermPtr m_right;
    Folding m_folding;
};

/// ANY, ALL or NONE over a list that is not constant.
class QuantifiedCondition : public Condition
{
public:
    QuantifiedCondition(
        Quantifier quantifier, Operator comparison, TermPtr list, TermPtr right, Folding folding);
    Truth evaluate(Match& match) const override;

private:
    Quantifier m_quantifier;
    Operator m_comparison;
    TermPtr m_list;
    TermPtr m_right;
    Folding m_folding;
};

/// A comparison of a text with a constant one.
class TextCondition : public Condition
{
public:
    TextCondition(TextRelation relation, TermPtr text, std::string_view pattern, Folding folding);
    Truth evaluate(Match& match) const override;

private:
    TermPtr m_text;
    TextPattern m_pattern;
};

/// A comparison of a text with many constant ones, of which one has to be equal.
class TextSetCondition : public Condition
{
public:
    TextSetCondition(TermPtr text, const std::vector<std::string_view>& texts, Folding folding);
    Truth evaluate(Match& match) const override;

private:
    TermPtr m_text;
    std::vector<std::string> m_texts; ///< folded and sorted
    Folding m_folding;
};

/// MATCHES with a constant pattern.
class RegexCondition : public Condition
{
public:
    RegexCondition(TermPtr text, std::string_view pattern, Regex regex, Folding folding);
    Truth evaluate(Match& match) const override;

private:
    TermPtr m_text;
    RegexShortcut m_shortcut;
    Regex m_regex;
    Folding m_folding;
};

} // namespace predicate
