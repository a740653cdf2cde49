// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/conditions.h"

#include <algorithm>

namespace predicate {

namespace {

// In the unit of Term::cost(), to which they are added.
constexpr int searchCost = 4;
constexpr int regexCost = 200;

int sum(const Conditions& parts)
{
    int cost = 1;
    for (const ConditionPtr& part : parts)
        cost = std::min(highestCost, cost + part->cost());
    return cost;
}

int comparisonCost(Operator comparison, const Term& left, const Term& right)
{
    const int own = comparison == Operator::Matches ? regexCost
                    : comparison >= Operator::In    ? searchCost
                                                    : 1;
    return std::min(highestCost, own + left.cost() + right.cost());
}

/// The result of `test`; false for nil and for values that are not texts.
template <typename Test>
Truth ofText(const Value& value, Test test)
{
    if (value.isText())
        return truth(test(value.asText()));
    return value.isUnknown() ? Truth::Unknown : Truth::False;
}

} // namespace

Truth outcomeForAll(const Condition& condition)
{
    Match match;
    const AnyEntry entry;
    match.begin(entry);
    return condition.evaluate(match);
}

CompoundCondition::CompoundCondition(Joint joint, Conditions parts)
    : Condition(sum(parts))
    , m_decisive(truth(joint == Joint::Or))
    , m_parts(std::move(parts))
{
    std::stable_sort(
        m_parts.begin(), m_parts.end(),
        [](const ConditionPtr& a, const ConditionPtr& b) { return a->cost() < b->cost(); });
}

Truth CompoundCondition::evaluate(Match& match) const
{
    Truth result = negation(m_decisive);
    for (const ConditionPtr& part : m_parts) {
        const Truth outcome = part->evaluate(match);
        if (outcome == m_decisive)
            return outcome;
        if (outcome == Truth::Unknown)
            result = outcome;
    }
    return result;
}

ComparisonCondition::ComparisonCondition(Operator comparison,
                                         TermPtr left,
                                         TermPtr right,
                                         Folding folding)
    : Condition(comparisonCost(comparison, *left, *right))
    , m_comparison(comparison)
    , m_left(std::move(left))
    , m_right(std::move(right))
    , m_folding(folding)
{
}

Truth ComparisonCondition::evaluate(Match& match) const
{
    const Value left = m_left->value(match);
    return compare(m_comparison, left, m_right->value(match), m_folding, match);
}

QuantifiedCondition::QuantifiedCondition(
    Quantifier quantifier, Operator comparison, TermPtr list, TermPtr right, Folding folding)
    : Condition(comparisonCost(comparison, *list, *right))
    , m_quantifier(quantifier)
    , m_comparison(comparison)
    , m_list(std::move(list))
    , m_right(std::move(right))
    , m_folding(folding)
{
}

Truth QuantifiedCondition::evaluate(Match& match) const
{
    const Value list = m_list->value(match);
    const Value right = m_right->value(match);
    if (list.isUnknown())
        return Truth::Unknown;
    // ALL fails with the first failure, ANY and NONE are decided by the first success.
    const Truth decisive = truth(m_quantifier != Quantifier::All);
    Truth result = negation(decisive);
    const bool isList = list.kind() == Value::Kind::List;
    for (const Value& element : isList ? list.asList() : std::span<const Value>()) {
        const Truth outcome = compare(m_comparison, element, right, m_folding, match);
        if (outcome == Truth::Unknown)
            result = outcome;
        if (outcome != decisive)
            continue;
        result = decisive;
        break;
    }
    return m_quantifier == Quantifier::None ? negation(result) : result;
}

TextCondition::TextCondition(TextRelation relation,
                             TermPtr text,
                             std::string_view pattern,
                             Folding folding)
    : Condition(text->cost() + (relation == TextRelation::Equal ? 1 : searchCost))
    , m_text(std::move(text))
    , m_pattern(relation, pattern, folding)
{
}

Truth TextCondition::evaluate(Match& match) const
{
    return ofText(m_text->value(match),
                  [&](std::string_view text) { return m_pattern.matches(text, match.folds()); });
}

TextSetCondition::TextSetCondition(TermPtr text,
                                   const std::vector<std::string_view>& texts,
                                   Folding folding)
    : Condition(text->cost() + searchCost)
    , m_text(std::move(text))
    , m_folding(folding)
{
    for (const std::string_view candidate : texts)
        m_texts.push_back(folded(candidate, folding));
    std::sort(m_texts.begin(), m_texts.end());
}

Truth TextSetCondition::evaluate(Match& match) const
{
    return ofText(m_text->value(match), [&](std::string_view text) {
        std::string room;
        const std::string_view wanted = match.folds().folded(text, m_folding, room);
        return std::binary_search(m_texts.begin(), m_texts.end(), wanted);
    });
}

RegexCondition::RegexCondition(TermPtr text, std::string_view pattern, Regex regex, Folding folding)
    : Condition(std::min(highestCost, text->cost() + regexCost))
    , m_text(std::move(text))
    , m_shortcut(pattern, folding)
    , m_regex(std::move(regex))
    , m_folding(folding)
{
}

Truth RegexCondition::evaluate(Match& match) const
{
    const Value value = m_text->value(match);
    if (!value.isText())
        return value.isUnknown() ? Truth::Unknown : Truth::False;
    const Truth outcome = m_shortcut.matches(value.asText(), match.folds());
    if (outcome != Truth::Unknown)
        return outcome;
    return truth(match.matchesRegex(m_regex, value.asText(), m_folding));
}

} // namespace predicate
