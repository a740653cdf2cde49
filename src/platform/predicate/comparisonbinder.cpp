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

bool isNameOfType(const Node& node)
{
    return node.kind == NodeKind::Name && node.name == "type";
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

/// The symbolic type of a side that is a field or a list of fields of one type.
Types symbolsOf(const Node& side, bool typeIsLogType)
{
    if (side.kind == NodeKind::List) {
        std::optional<Types> common;
        for (const Node& child : side.children) {
            const Types types = symbolsOf(child, typeIsLogType);
            if (types != common.value_or(types))
                return type::nil;
            common = types;
        }
        return common.value_or(type::nil);
    }
    if (typeIsLogType && isNameOfType(side))
        return type::logType;
    const std::optional<Field> field = fieldOf(side);
    return field ? fieldInfo(*field).types & type::symbolic : type::nil;
}

/// Whether the side is a text in which the other is looked for: it is no name of a value then.
bool isSearchedText(const Node& comparison, const Node& side)
{
    const bool isRight = &side == &comparison.children.back();
    const bool searched = isRight == (comparison.comparison == Operator::In);
    return searched && looksInside(comparison.comparison) && isText(side);
}

} // namespace

ConditionPtr Binder::comparison(const Node& node)
{
    const Sides sides = bindSides(node);
    if (!failed())
        checkSides(node, sides);
    if (failed())
        return std::make_unique<FixedCondition>(false);
    if (node.quantifier != Quantifier::One)
        return quantified(node, sides);
    return compiled(node, sides.left, sides.right);
}

Binder::Sides Binder::bindSides(const Node& node)
{
    const Node& left = node.children[0];
    const Node& right = node.children[1];
    const bool values = comparesValues(node.comparison);
    // A field written as `type` is the message type beside nothing but names of those.
    Reading ofLeft;
    Reading ofRight;
    ofLeft.typeIsLogType = values && namesLogTypesOnly(right);
    ofRight.typeIsLogType = values && namesLogTypesOnly(left);
    if (values && !isSearchedText(node, left))
        ofLeft.symbols = symbolsOf(right, ofRight.typeIsLogType);
    if (values && !isSearchedText(node, right))
        ofRight.symbols = symbolsOf(left, ofLeft.typeIsLogType);
    Sides sides;
    sides.left = term(left, ofLeft);
    if (!failed())
        checkLeft(node, *sides.left);
    ofRight.text = sides.left->type().isText() ? &right : nullptr;
    sides.right = term(right, ofRight);
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
    Reading dates;
    dates.dates = true;
    if (left.compared() == type::date && textsRight)
        sides.right = term(node.children[1], dates);
    else if (right.compared() == type::date && textsLeft)
        sides.left = term(node.children[0], dates);
}

} // namespace predicate
