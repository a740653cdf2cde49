// SPDX-License-Identifier: MIT
#include "platform/predicate/binder.h"
#include "platform/predicate/symbolicvalues.h"

#include <algorithm>

namespace predicate {

namespace {

/// Comparisons of values, for which names can stand and texts can be dates.
bool comparesValues(Operator comparison)
{
    return comparison <= Operator::Contains || comparison == Operator::Between;
}

std::optional<Field> fieldOf(const Node& node)
{
    if (node.kind == NodeKind::Name)
        return fieldNamed(node.name);
    const bool ofSelf = node.kind == NodeKind::Path && node.children.size() == 2
                        && node.children[0].kind == NodeKind::Self
                        && node.children[1].kind == NodeKind::Member;
    return ofSelf ? fieldNamed(node.children[1].name) : std::nullopt;
}

/// The names that stand on one side, as words, texts or elements of a list.
void collectNames(const Node& node, std::vector<std::string_view>& names)
{
    const auto* text = std::get_if<std::string>(&node.value.value);
    if (node.kind == NodeKind::Name)
        names.emplace_back(node.name);
    else if (node.kind == NodeKind::Constant && text != nullptr)
        names.emplace_back(*text);
    else if (node.kind == NodeKind::List)
        std::for_each(node.children.begin(), node.children.end(),
                      [&](const Node& child) { collectNames(child, names); });
}

bool namesLogTypesOnly(const Node& node)
{
    std::vector<std::string_view> names;
    collectNames(node, names);
    return !names.empty() && std::all_of(names.begin(), names.end(), [](std::string_view name) {
        return symbolicValue(type::logType, name).has_value();
    });
}

bool onlyTexts(const Term& term)
{
    return term.type().types != type::nil && (term.type().types & ~type::anyText) == 0;
}

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

/// The elements of a list that is written out.
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

/// The comparison as one of a text with constant texts, when it is one.
ConditionPtr
textCondition(Operator comparison, const TermPtr& left, const TermPtr& right, Folding folding)
{
    const auto leftText = constantText(*left);
    const auto rightText = constantText(*right);
    const bool relates = comparison == Operator::Equal
                         || (comparison >= Operator::Contains && comparison <= Operator::Like);
    if (relates && rightText && onlyTexts(*left))
        return std::make_unique<TextCondition>(relationOf(comparison), left, *rightText, folding);
    if (comparison == Operator::Equal && leftText && onlyTexts(*right))
        return std::make_unique<TextCondition>(TextRelation::Equal, right, *leftText, folding);
    if (comparison == Operator::In && leftText && onlyTexts(*right))
        return std::make_unique<TextCondition>(TextRelation::Contains, right, *leftText, folding);
    const bool membership = comparison == Operator::In || comparison == Operator::Contains;
    const TermPtr& element = comparison == Operator::In ? left : right;
    const auto texts =
        membership ? constantTexts(comparison == Operator::In ? *right : *left) : std::nullopt;
    if (texts && onlyTexts(*element))
        return std::make_unique<TextSetCondition>(element, *texts, folding);
    return nullptr;
}

} // namespace

ConditionPtr Binder::comparison(const Node& node)
{
    const Sides sides = bindSides(node);
    if (!failed())
        checkSides(node, sides);
    if (failed())
        return std::make_unique<FixedCondition>(false);
    Folding folding(node.options);
    const Types all = sides.left->type().types | sides.left->type().elements
                      | sides.right->type().types | sides.right->type().elements;
    folding.caseless = folding.caseless || (all & type::uuid) != 0;
    if (node.quantifier != Quantifier::One)
        return quantified(node, sides, folding);
    return compiled(node, sides.left, sides.right, folding);
}

/// The symbolic field that one side is. Written as `type` it means the message type when the other
/// side has only names of those.
std::optional<Field> Binder::symbolicField(const Node& side, const Node& other) const
{
    const std::optional<Field> field = fieldOf(side);
    if (!field || (fieldInfo(*field).types & type::symbolic) == 0)
        return std::nullopt;
    const bool writtenType = side.kind == NodeKind::Name && side.name == "type";
    return writtenType && namesLogTypesOnly(other) ? Field::LogType : field;
}

TermPtr Binder::side(const Node& node, std::optional<Field> symbolic, Reading reading)
{
    return symbolic ? std::make_shared<FieldTerm>(*symbolic) : term(node, reading);
}

Binder::Sides Binder::bindSides(const Node& node)
{
    const Node& left = node.children[0];
    const Node& right = node.children[1];
    const bool values = comparesValues(node.comparison);
    const auto leftField = values ? symbolicField(left, right) : std::nullopt;
    const auto rightField = values ? symbolicField(right, left) : std::nullopt;
    Sides sides;
    sides.left = side(left, leftField,
                      {rightField ? fieldInfo(*rightField).types : type::nil, false, false});
    if (!failed())
        checkLeft(node, *sides.left);
    const bool besideText = onlyTexts(*sides.left);
    sides.right = side(right, rightField,
                       {leftField ? fieldInfo(*leftField).types : type::nil, false, besideText});
    if (values && !failed())
        readDates(node, sides);
    return sides;
}

/// Binds a side again whose texts stand beside dates.
void Binder::readDates(const Node& node, Sides& sides)
{
    const Type& left = sides.left->type();
    const Type& right = sides.right->type();
    const bool textInText = (node.comparison == Operator::In && !right.isList())
                            || (node.comparison == Operator::Contains && !left.isList());
    if (textInText)
        return;
    const bool textsLeft = (left.compared() & type::text) != 0;
    const bool textsRight = (right.compared() & type::text) != 0;
    const Reading dates{type::nil, true, false};
    if (left.compared() == type::date && textsRight)
        sides.right = term(node.children[1], dates);
    else if (right.compared() == type::date && textsLeft)
        sides.left = term(node.children[0], dates);
}

ConditionPtr Binder::quantified(const Node& node, const Sides& sides, Folding folding)
{
    const auto elements = writtenElements(*sides.left);
    if (!elements)
        return std::make_unique<QuantifiedCondition>(node.quantifier, node.comparison, sides.left,
                                                     sides.right, folding);
    Conditions parts;
    for (const TermPtr& element : *elements)
        parts.push_back(compiled(node, element, sides.right, folding));
    const bool all = node.quantifier == Quantifier::All;
    auto joined = std::make_unique<CompoundCondition>(
        all ? CompoundCondition::Joint::And : CompoundCondition::Joint::Or, std::move(parts));
    if (node.quantifier != Quantifier::None)
        return joined;
    return std::make_unique<NotCondition>(std::move(joined));
}

ConditionPtr
Binder::compiled(const Node& node, const TermPtr& left, const TermPtr& right, Folding folding)
{
    const bool unequal = node.comparison == Operator::NotEqual;
    const Operator comparison = unequal ? Operator::Equal : node.comparison;
    ConditionPtr condition;
    if (comparison == Operator::Matches)
        condition = compiledMatches(node, left, right, folding);
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
ConditionPtr Binder::compiledMatches(const Node& node,
                                     const TermPtr& left,
                                     const TermPtr& right,
                                     Folding folding)
{
    const auto pattern = constantText(*right);
    if (!pattern)
        return nullptr;
    auto regex = compiledRegex(*pattern, folding);
    if (!regex) {
        fail(node.children[1].position,
             "This regular expression is not valid: " + regex.error() + ".");
        return std::make_unique<FixedCondition>(false);
    }
    return std::make_unique<RegexCondition>(left, *std::move(regex), folding);
}

} // namespace predicate
