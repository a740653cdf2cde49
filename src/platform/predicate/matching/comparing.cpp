// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/comparing.h"

#include "platform/predicate/text/textpattern.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace predicate {

namespace {

/// Calls `relation` with both texts folded.
template <typename Relation>
auto withFolded(
    const Value& left, const Value& right, Folding folding, Match& match, Relation relation)
{
    std::string leftRoom;
    std::string rightRoom;
    return relation(match.folds().folded(left.asText(), folding, leftRoom),
                    match.folds().folded(right.asText(), folding, rightRoom));
}

bool eitherUnknown(const Value& left, const Value& right)
{
    return left.isUnknown() || right.isUnknown();
}

/// Negative, 0 or positive, or no value when the two have no order.
std::optional<int> order(const Value& left, const Value& right, Folding folding, Match& match)
{
    if (left.isNumber() && right.isNumber())
        return compareNumbers(left, right);
    if (left.isText() && right.isText())
        return withFolded(left, right, folding, match, compareUtf16Order);
    if (left.kind() == Value::Kind::Date && right.kind() == Value::Kind::Date) {
        const std::int64_t a = left.asNanoseconds();
        const std::int64_t b = right.asNanoseconds();
        return a < b ? -1 : a > b ? 1 : 0;
    }
    return std::nullopt;
}

Truth inOrder(
    Operator comparison, const Value& left, const Value& right, Folding folding, Match& match)
{
    if (eitherUnknown(left, right))
        return Truth::Unknown;
    const bool orEqual =
        comparison == Operator::LessOrEqual || comparison == Operator::GreaterOrEqual;
    const std::optional<int> result = order(left, right, folding, match);
    if (!result)
        return orEqual ? areEqual(left, right, folding, match) : Truth::False;
    switch (comparison) {
    case Operator::Less: return truth(*result < 0);
    case Operator::LessOrEqual: return truth(*result <= 0);
    case Operator::Greater: return truth(*result > 0);
    default: return truth(*result >= 0);
    }
}

Truth between(const Value& left, const Value& bounds, Folding folding, Match& match)
{
    if (eitherUnknown(left, bounds))
        return Truth::Unknown;
    if (bounds.kind() != Value::Kind::List || bounds.asList().size() != 2 || left.isNil())
        return Truth::False;
    const Value& lowest = bounds.asList()[0];
    const Value& highest = bounds.asList()[1];
    if (lowest.isNil() || highest.isNil())
        return Truth::False;
    const Truth above = inOrder(Operator::GreaterOrEqual, left, lowest, folding, match);
    const Truth below = inOrder(Operator::LessOrEqual, left, highest, folding, match);
    if (above == Truth::False || below == Truth::False)
        return Truth::False;
    return above == Truth::Unknown ? above : below;
}

Truth listContains(const Value& list, const Value& element, Folding folding, Match& match)
{
    if (element.isNil())
        return Truth::False;
    Truth result = Truth::False;
    for (const Value& candidate : list.asList()) {
        const Truth equal = areEqual(candidate, element, folding, match);
        if (equal == Truth::True)
            return equal;
        if (equal == Truth::Unknown)
            result = equal;
    }
    return result;
}

Truth textRelation(
    Operator comparison, const Value& left, const Value& right, Folding folding, Match& match)
{
    if (!left.isText() || !right.isText())
        return Truth::False;
    const auto holds = [&](TextRelation relation, const Value& text, const Value& pattern) {
        return truth(relates(relation, text.asText(), pattern.asText(), folding, match.folds()));
    };
    switch (comparison) {
    case Operator::In: return holds(TextRelation::Contains, right, left);
    case Operator::Contains: return holds(TextRelation::Contains, left, right);
    case Operator::BeginsWith: return holds(TextRelation::BeginsWith, left, right);
    case Operator::EndsWith: return holds(TextRelation::EndsWith, left, right);
    case Operator::Like: return holds(TextRelation::Like, left, right);
    case Operator::Matches:
        return truth(match.matchesPattern(right.asText(), left.asText(), folding));
    default: return Truth::False;
    }
}

Truth listsAreEqual(const Value& left, const Value& right, Folding folding, Match& match)
{
    const auto a = left.asList();
    const auto b = right.asList();
    Truth result = truth(a.size() == b.size());
    for (std::size_t i = 0; i < a.size() && result != Truth::False; ++i) {
        const Truth equal = areEqual(a[i], b[i], folding, match);
        result = equal == Truth::True ? result : equal;
        if (equal == Truth::False)
            return equal;
    }
    return result;
}

} // namespace

Truth areEqual(const Value& left, const Value& right, Folding folding, Match& match)
{
    using Kind = Value::Kind;
    if (eitherUnknown(left, right))
        return Truth::Unknown;
    if (left.isText() && right.isText())
        return truth(withFolded(left, right, folding, match, std::equal_to<>()));
    if (left.kind() == Kind::List && right.kind() == Kind::List)
        return listsAreEqual(left, right, folding, match);
    if (const auto result = order(left, right, folding, match))
        return truth(*result == 0);
    if (left.kind() == Kind::Symbol && right.kind() == Kind::Symbol)
        return truth(left.asInteger() == right.asInteger());
    return truth(left.isNil() && right.isNil());
}

Truth compare(
    Operator comparison, const Value& left, const Value& right, Folding folding, Match& match)
{
    switch (comparison) {
    case Operator::Equal: return areEqual(left, right, folding, match);
    case Operator::NotEqual: return negation(areEqual(left, right, folding, match));
    case Operator::Less:
    case Operator::LessOrEqual:
    case Operator::Greater:
    case Operator::GreaterOrEqual: return inOrder(comparison, left, right, folding, match);
    case Operator::Between: return between(left, right, folding, match);
    default: break;
    }
    if (eitherUnknown(left, right))
        return Truth::Unknown;
    if (comparison == Operator::In && right.kind() == Value::Kind::List)
        return listContains(right, left, folding, match);
    if (comparison == Operator::Contains && left.kind() == Value::Kind::List)
        return listContains(left, right, folding, match);
    return textRelation(comparison, left, right, folding, match);
}

} // namespace predicate
