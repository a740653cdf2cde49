// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/comparisoncompiler.h"

#include "platform/predicate/binding/names.h"

#include <algorithm>
#include <array>

namespace predicate {

namespace {

std::optional<std::string_view> constantText(const Term& term)
{
    const Value* value = term.constant();
    return value != nullptr && value->isText() ? std::optional(value->asText()) : std::nullopt;
}

/// The elements of a constant list of texts, without nil.
std::optional<std::vector<std::string_view>> constantTexts(const Term& term)
{
    const Value* list = term.constant();
    if (list == nullptr || list->kind() != Value::Kind::List
        || (term.type().elements & ~type::text) != 0)
        return std::nullopt;
    std::vector<std::string_view> texts;
    for (const Value& element : list->asList()) {
        if (element.isText())
            texts.push_back(element.asText());
    }
    return texts;
}

/// The elements of a list, if they are written out.
std::optional<Terms> writtenElements(const Term& list)
{
    if (const Terms* elements = list.elements())
        return *elements;
    const Value* value = list.constant();
    if (value == nullptr || value->kind() != Value::Kind::List)
        return std::nullopt;
    Terms elements;
    for (const Value& element : value->asList())
        elements.push_back(std::make_shared<ConstantTerm>(element, typeOf(element)));
    return elements;
}

TextRelation relationOf(Operator comparison)
{
    switch (comparison) {
    case Operator::Contains: return TextRelation::Contains;
    case Operator::BeginsWith: return TextRelation::BeginsWith;
    case Operator::EndsWith: return TextRelation::EndsWith;
    case Operator::Like: return TextRelation::Like;
    default: return TextRelation::Equal;
    }
}

/// UUIDs are compared without regard to case.
Folding foldingOf(const Node& node, const Term& left, const Term& right)
{
    const Options& options = node.options;
    const bool uuids =
        left.type().compared() == type::uuid || right.type().compared() == type::uuid;
    return {(options.caseless && !options.normalized) || uuids,
            options.markless && !options.normalized};
}

/// The condition for a comparison of a text with constant texts; null for other comparisons.
ConditionPtr
textCondition(Operator comparison, const TermPtr& left, const TermPtr& right, Folding folding)
{
    const auto leftText = constantText(*left);
    const auto rightText = constantText(*right);
    const bool relates = comparison == Operator::Equal
                         || (comparison >= Operator::Contains && comparison <= Operator::Like);
    if (relates && rightText && left->type().isText())
        return std::make_unique<TextCondition>(relationOf(comparison), left, *rightText, folding);
    if (comparison == Operator::Equal && leftText && right->type().isText())
        return std::make_unique<TextCondition>(TextRelation::Equal, right, *leftText, folding);
    if (comparison == Operator::In && leftText && right->type().isText())
        return std::make_unique<TextCondition>(TextRelation::Contains, right, *leftText, folding);
    const bool membership = looksInside(comparison);
    const TermPtr& element = comparison == Operator::In ? left : right;
    const auto texts =
        membership ? constantTexts(comparison == Operator::In ? *right : *left) : std::nullopt;
    if (texts && element->type().isText())
        return std::make_unique<TextSetCondition>(element, *texts, folding);
    return nullptr;
}

} // namespace

ConditionPtr ComparisonCompiler::compiled(const TermPtr& left, const TermPtr& right)
{
    return m_node.quantifier == Quantifier::One ? one(left, right) : quantified(left, right);
}

ConditionPtr ComparisonCompiler::quantified(const TermPtr& left, const TermPtr& right)
{
    const auto elements = writtenElements(*left);
    // One comparison for each element is faster, but each may copy the other side.
    constexpr std::size_t mostCopied = 1'000'000;
    const std::size_t rightLength = m_node.children[1].end - m_node.children[1].position;
    if (!elements || elements->size() > mostCopied / std::max(rightLength, std::size_t{1}))
        return std::make_unique<QuantifiedCondition>(m_node.quantifier, m_node.comparison, left,
                                                     right, foldingOf(m_node, *left, *right));
    Conditions parts;
    for (const TermPtr& element : *elements)
        parts.push_back(one(element, right));
    const bool all = m_node.quantifier == Quantifier::All;
    auto joined = std::make_unique<CompoundCondition>(
        all ? CompoundCondition::Joint::And : CompoundCondition::Joint::Or, std::move(parts));
    if (m_node.quantifier != Quantifier::None)
        return joined;
    return std::make_unique<NotCondition>(std::move(joined));
}

/// Membership in a list of UUIDs and other texts, which are compared in different ways. Null for
/// other comparisons.
ConditionPtr ComparisonCompiler::mixedMembership(const TermPtr& left, const TermPtr& right)
{
    const bool isIn = m_node.comparison == Operator::In;
    const TermPtr& list = isIn ? right : left;
    if (!looksInside(m_node.comparison) || list->elements() == nullptr
        || foldingOf(m_node, *left, *right).caseless)
        return nullptr;
    Terms uuids;
    Terms others;
    for (const TermPtr& element : *list->elements())
        (element->type().types == type::uuid ? uuids : others).push_back(element);
    if (uuids.empty())
        return nullptr;
    Conditions parts;
    for (Terms& elements : std::array{std::move(uuids), std::move(others)}) {
        const TermPtr part = listTerm(std::move(elements));
        parts.push_back(isIn ? one(left, part) : one(part, right));
    }
    return std::make_unique<CompoundCondition>(CompoundCondition::Joint::Or, std::move(parts));
}

ConditionPtr ComparisonCompiler::one(const TermPtr& left, const TermPtr& right)
{
    if (ConditionPtr mixed = mixedMembership(left, right))
        return mixed;
    const Folding folding = foldingOf(m_node, *left, *right);
    const bool unequal = m_node.comparison == Operator::NotEqual;
    const Operator comparison = unequal ? Operator::Equal : m_node.comparison;
    ConditionPtr condition;
    if (comparison == Operator::Matches)
        condition = expression(left, right, folding);
    else
        condition = textCondition(comparison, left, right, folding);
    if (!condition)
        condition = std::make_unique<ComparisonCondition>(comparison, left, right, folding);
    if (left->constant() != nullptr && right->constant() != nullptr)
        condition = std::make_unique<FixedCondition>(outcomeForAll(*condition) == Truth::True);
    if (!unequal)
        return condition;
    return std::make_unique<NotCondition>(std::move(condition));
}

/// Null when the pattern is not constant.
ConditionPtr
ComparisonCompiler::expression(const TermPtr& left, const TermPtr& right, Folding folding)
{
    const auto pattern = constantText(*right);
    if (!pattern)
        return nullptr;
    auto regex = compiledRegex(*pattern, folding);
    if (!regex) {
        m_context.fail(m_node.children[1].position,
                       "This regular expression is not valid: " + regex.error() + ".");
        return std::make_unique<FixedCondition>(false);
    }
    return std::make_unique<RegexCondition>(left, *pattern, *std::move(regex), folding);
}

} // namespace predicate
