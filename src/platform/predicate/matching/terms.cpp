// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/terms.h"

#include "platform/predicate/matching/arithmetic.h"
#include "platform/predicate/matching/fieldtable.h"

#include <algorithm>
#include <numeric>

namespace predicate {

namespace {

bool anyUnknown(std::span<const Value> values)
{
    return std::any_of(values.begin(), values.end(),
                       [](const Value& value) { return value.isUnknown(); });
}

bool anyNil(std::span<const Value> values)
{
    return std::any_of(values.begin(), values.end(),
                       [](const Value& value) { return value.isNil(); });
}

int costOf(const TermPtr& list, const std::vector<ElementTerm::Place>& places)
{
    return std::accumulate(places.begin(), places.end(), list->cost(),
                           [](int cost, const ElementTerm::Place& place) {
                               const int own = place.number ? place.number->cost() : 0;
                               return std::min(highestCost, cost + 1 + own);
                           });
}

Value elementAt(const Value& list, const ElementTerm::Place& place, Match& match)
{
    const Value number = place.number ? place.number->value(match) : Value();
    if (list.isUnknown() || number.isUnknown())
        return Value::unknown();
    if (list.kind() != Value::Kind::List || list.asList().empty())
        return {};
    using Kind = ElementTerm::Place::Kind;
    const std::span<const Value> elements = list.asList();
    if (place.kind != Kind::Number)
        return place.kind == Kind::First ? elements.front() : elements.back();
    const bool inside = number.kind() == Value::Kind::Integer && number.asInteger() >= 0
                        && static_cast<std::uint64_t>(number.asInteger()) < elements.size();
    return inside ? elements[static_cast<std::size_t>(number.asInteger())] : Value();
}

} // namespace

int costOf(const Terms& terms)
{
    return std::accumulate(terms.begin(), terms.end(), 1, [](int cost, const TermPtr& term) {
        return std::min(highestCost, cost + term->cost());
    });
}

bool areConstant(const Terms& terms)
{
    return std::all_of(terms.begin(), terms.end(),
                       [](const TermPtr& term) { return term->constant() != nullptr; });
}

ConstantTerm::ConstantTerm(const Value& value, Type type) : Term(type, 0), m_value(keep(value))
{
}

Value ConstantTerm::keep(const Value& value)
{
    if (value.isText())
        return Value::text(m_texts.emplace_back(value.asText()));
    if (value.kind() != Value::Kind::List)
        return value;
    std::vector<Value> elements;
    for (const Value& element : value.asList())
        elements.push_back(keep(element));
    return Value::list(m_lists.emplace_back(std::move(elements)));
}

FieldTerm::FieldTerm(Field field)
    : Term({fieldInfo(field).types, type::nil, {}}, fieldInfo(field).cost)
    , m_field(field)
{
}

ListTerm::ListTerm(Terms elements, Type type)
    : Term(type, costOf(elements))
    , m_elements(std::move(elements))
{
}

Value ListTerm::value(Match& match) const
{
    std::vector<Value>& values = match.newList();
    for (const TermPtr& element : m_elements)
        values.push_back(element->value(match));
    return Value::list(values);
}

ChainTerm::ChainTerm(std::string signs, Terms operands, Type type)
    : Term(type, costOf(operands))
    , m_signs(std::move(signs))
    , m_operands(std::move(operands))
{
}

Value ChainTerm::value(Match& match) const
{
    Value result = m_operands.front()->value(match);
    for (std::size_t i = 0; i < m_signs.size(); ++i)
        result = arithmetic(m_signs[i], result, m_operands[i + 1]->value(match));
    return result;
}

CallTerm::CallTerm(Function function, Terms arguments, Type type, bool takesNil)
    : Term(type, costOf(arguments))
    , m_function(std::move(function))
    , m_arguments(std::move(arguments))
    , m_takesNil(takesNil)
{
}

Value CallTerm::value(Match& match) const
{
    std::vector<Value>& values = match.newList();
    for (const TermPtr& argument : m_arguments)
        values.push_back(argument->value(match));
    if (anyUnknown(values))
        return Value::unknown();
    if (!m_takesNil && anyNil(values))
        return {};
    return m_function(values, match);
}

ElementTerm::ElementTerm(TermPtr list, std::vector<Place> places, Type type)
    : Term(type, costOf(list, places))
    , m_list(std::move(list))
    , m_places(std::move(places))
{
}

Value ElementTerm::value(Match& match) const
{
    Value value = m_list->value(match);
    for (const Place& place : m_places) {
        value = elementAt(value, place, match);
        if (value.isUnknown())
            break;
    }
    return value;
}

TernaryTerm::TernaryTerm(ConditionPtr condition, TermPtr whenTrue, TermPtr whenFalse, Type type)
    : Term(type, condition->cost() + std::max(whenTrue->cost(), whenFalse->cost()))
    , m_condition(std::move(condition))
    , m_whenTrue(std::move(whenTrue))
    , m_whenFalse(std::move(whenFalse))
{
}

Value TernaryTerm::value(Match& match) const
{
    switch (m_condition->evaluate(match)) {
    case Truth::True: return m_whenTrue->value(match);
    case Truth::False: return m_whenFalse->value(match);
    default: return Value::unknown();
    }
}

TermPtr listTerm(Terms elements)
{
    Type type{type::list, type::nil, elements.size()};
    for (const TermPtr& element : elements)
        type.elements |= element->type().types;
    const bool constant = areConstant(elements);
    return foldedConstant(std::make_shared<ListTerm>(std::move(elements), type), constant);
}

TermPtr foldedConstant(TermPtr term, bool constant)
{
    if (!constant)
        return term;
    Match match;
    const AnyEntry entry;
    match.begin(entry);
    const Value value = term->value(match);
    Type type = term->type();
    if (value.isNil())
        type = Type{};
    return std::make_shared<ConstantTerm>(value, type);
}

} // namespace predicate
