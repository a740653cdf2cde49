// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/names.h"

#include "platform/base/ascii.h"
#include "platform/predicate/binding/symbolicvalues.h"
#include "platform/predicate/matching/fieldtable.h"
#include "platform/predicate/text/sentences.h"

#include <algorithm>

namespace predicate {

namespace {

std::string notSymbolic(Types symbols, std::string_view name)
{
    const std::string wrong = quoted(name) + " is not " + described(symbols) + ".";
    const std::string_view field = fieldOfSymbol(name);
    if (!field.empty())
        return wrong + " Did you mean " + std::string(field) + "?";
    return wrong + " It can be " + symbolicNames(symbols) + ".";
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

/// Collects the names on one side: words, texts, and these as elements of lists.
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

/// Whether the side is a text that is searched for the other: then it is not the name of a value.
bool isSearchedText(const Node& comparison, const Node& side)
{
    const bool isRight = &side == &comparison.children.back();
    const bool searched = isRight == (comparison.comparison == Operator::In);
    return searched && looksInside(comparison.comparison) && isText(side);
}

} // namespace

bool comparesValues(Operator comparison)
{
    return comparison <= Operator::Contains || comparison == Operator::Between;
}

Readings readingsOf(const Node& comparison)
{
    Readings out;
    if (!comparesValues(comparison.comparison))
        return out;
    const Node& left = comparison.children[0];
    const Node& right = comparison.children[1];
    // A field written as `type` is the message type when all names on the other side are.
    out.left.typeIsLogType = namesLogTypesOnly(right);
    out.right.typeIsLogType = namesLogTypesOnly(left);
    if (!isSearchedText(comparison, left))
        out.left.symbols = symbolsOf(right, out.right.typeIsLogType);
    if (!isSearchedText(comparison, right))
        out.right.symbols = symbolsOf(left, out.left.typeIsLogType);
    return out;
}

TermPtr constantTerm(const Value& value)
{
    return std::make_shared<ConstantTerm>(value, typeOf(value));
}

Type typeOf(const Value& value)
{
    using Kind = Value::Kind;
    switch (value.kind()) {
    case Kind::Integer:
    case Kind::Unsigned: return {type::integer, type::nil, {}};
    case Kind::Real:
    case Kind::Seconds: return {type::real, type::nil, {}};
    case Kind::Text: return {type::text, type::nil, {}};
    case Kind::Date: return {type::date, type::nil, {}};
    case Kind::Symbol: return {type::eventType, type::nil, {}};
    case Kind::List: break;
    default: return {};
    }
    Type type{type::list, type::nil, value.asList().size()};
    for (const Value& element : value.asList())
        type.elements |= typeOf(element).types;
    return type;
}

TermPtr NameBinder::constant(const Node& node, Reading reading)
{
    const auto* text = std::get_if<std::string>(&node.value.value);
    if (text != nullptr && reading.symbols != type::nil) {
        const auto symbol = symbolicValue(reading.symbols, *text);
        return symbol ? constantTerm(*symbol)
                      : m_context.failedTerm(node.position, notSymbolic(reading.symbols, *text));
    }
    if (text != nullptr && reading.dates) {
        if (const auto date = readDate(*text, m_context.settings().utcOffset))
            return constantTerm(Value::date(*date));
        return m_context.failedTerm(node.position,
                                    quoted(*text) + " is not a date; write 2024-03-07 14:05.");
    }
    return constantTerm(valueOf(node.value));
}

TermPtr NameBinder::name(const Node& node, Reading reading)
{
    if (reading.symbols != type::nil) {
        if (const auto symbol = symbolicValue(reading.symbols, node.name))
            return constantTerm(*symbol);
        if (!fieldNamed(node.name))
            return m_context.failedTerm(node.position, notSymbolic(reading.symbols, node.name));
    }
    const bool logType = reading.typeIsLogType && node.name == "type";
    return field(logType ? "logType" : node.name, node.position, reading);
}

TermPtr NameBinder::field(const std::string& name, std::size_t position, Reading reading)
{
    if (const auto found = fieldNamed(name)) {
        m_context.addField(*found);
        return std::make_shared<FieldTerm>(*found);
    }
    const std::string_view meant = suggestedField(name);
    const bool onlyCase = equalIgnoringAsciiCase(std::string_view(name), meant);
    std::string sentence = "There is no field " + quoted(name) + ".";
    const bool isWord = reading.text != nullptr && reading.text->kind == NodeKind::Name;
    if (reading.text != nullptr && !onlyCase)
        sentence +=
            " A text needs quotes: \"" + (isWord ? name : m_context.source(*reading.text)) + "\".";
    else if (!meant.empty())
        sentence += " Did you mean " + std::string(meant) + "?";
    return m_context.failedTerm(position, std::move(sentence));
}

} // namespace predicate
