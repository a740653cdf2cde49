// SPDX-License-Identifier: MIT
#include "platform/base/ascii.h"
#include "platform/predicate/arithmetic.h"
#include "platform/predicate/binder.h"
#include "platform/predicate/sentences.h"
#include "platform/predicate/symbolicvalues.h"

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

TermPtr constantTerm(const Value& value)
{
    return std::make_shared<ConstantTerm>(value, typeOf(value));
}

} // namespace

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

TermPtr Binder::term(const Node& node, Reading reading)
{
    switch (node.kind) {
    case NodeKind::Constant: return constant(node, reading);
    case NodeKind::Name: return name(node, reading);
    case NodeKind::Variable:
        return failedTerm(node.position, quoted("$" + node.name) + " has no value.");
    case NodeKind::Self: return std::make_shared<EntryTerm>();
    case NodeKind::List: return list(node, reading);
    case NodeKind::Chain: return chain(node, reading);
    case NodeKind::Negation: return negation(node);
    case NodeKind::Path: return path(node, reading);
    case NodeKind::Call: return call(node);
    case NodeKind::Now: return constantTerm(Value::date(m_settings.now));
    case NodeKind::Cast: return cast(node);
    default: return ternary(node);
    }
}

Terms Binder::terms(const std::vector<Node>& nodes, Reading reading)
{
    Terms out;
    for (const Node& node : nodes)
        out.push_back(term(node, reading));
    return out;
}

TermPtr Binder::constant(const Node& node, Reading reading)
{
    const auto* text = std::get_if<std::string>(&node.value.value);
    if (text != nullptr && reading.symbols != type::nil) {
        const auto symbol = symbolicValue(reading.symbols, *text);
        return symbol ? constantTerm(*symbol)
                      : failedTerm(node.position, notSymbolic(reading.symbols, *text));
    }
    if (text != nullptr && reading.dates) {
        if (const auto date = readDate(*text, m_settings.utcOffset))
            return constantTerm(Value::date(*date));
        return failedTerm(node.position, quoted(*text) + " is not a date; write 2024-03-07 14:05.");
    }
    return constantTerm(valueOf(node.value));
}

TermPtr Binder::name(const Node& node, Reading reading)
{
    if (reading.symbols != type::nil) {
        if (const auto symbol = symbolicValue(reading.symbols, node.name))
            return constantTerm(*symbol);
        if (!fieldNamed(node.name))
            return failedTerm(node.position, notSymbolic(reading.symbols, node.name));
    }
    const bool logType = reading.typeIsLogType && node.name == "type";
    return field(logType ? "logType" : node.name, node.position, reading);
}

TermPtr Binder::field(const std::string& name, std::size_t position, Reading reading)
{
    if (const auto found = fieldNamed(name)) {
        m_fields.set(static_cast<std::size_t>(*found));
        return std::make_shared<FieldTerm>(*found);
    }
    const std::string_view meant = suggestedField(name);
    const bool onlyCase = equalIgnoringAsciiCase(std::string_view(name), meant);
    std::string sentence = "There is no field " + quoted(name) + ".";
    const bool isWord = reading.text != nullptr && reading.text->kind == NodeKind::Name;
    if (reading.text != nullptr && !onlyCase)
        sentence += " A text needs quotes: \"" + (isWord ? name : source(*reading.text)) + "\".";
    else if (!meant.empty())
        sentence += " Did you mean " + std::string(meant) + "?";
    return failedTerm(position, std::move(sentence));
}

TermPtr Binder::list(const Node& node, Reading reading)
{
    Terms elements;
    for (const Node& child : node.children) {
        reading.text = reading.text != nullptr ? &child : nullptr;
        elements.push_back(term(child, reading));
        if ((elements.back()->type().types & type::entry) != 0)
            return failedTerm(child.position, "SELF can only be compared with nil.");
    }
    return listTerm(std::move(elements));
}

TermPtr Binder::chain(const Node& node, Reading reading)
{
    Terms operands = terms(node.children, reading.onlyText());
    Types all = type::nil;
    for (std::size_t i = 0; i < operands.size(); ++i) {
        const Types types = operands[i]->type().types;
        all |= types;
        if (operands[i]->type().fits(type::number))
            continue;
        const char sign = node.name[i == 0 ? 0 : i - 1];
        const std::string spelled = sign == '^' ? "**" : std::string(1, sign);
        return failedTerm(node.position,
                          spelled + " needs numbers; " + sourceIs(node.children[i], types) + ".");
    }
    const bool whole = (all & ~type::wholeNumber) == 0 && node.name.front() != '^';
    const Types result = whole ? type::integer : type::integer | type::real;
    const bool constant = areConstant(operands);
    return foldedConstant(
        std::make_shared<ChainTerm>(node.name, std::move(operands), Type{result, type::nil, {}}),
        constant);
}

TermPtr Binder::negation(const Node& node)
{
    Terms operands = terms(node.children);
    const Type type = operands.front()->type();
    if (!type.fits(type::number))
        return failedTerm(node.position,
                          "- needs a number; " + sourceIs(node.children.front(), type.types) + ".");
    const bool constant = areConstant(operands);
    const auto function = [](std::span<const Value> values, Match&) {
        return negated(values.front());
    };
    const Type result{static_cast<Types>(type::integer | (type.types & type::real)), type::nil, {}};
    return foldedConstant(std::make_shared<CallTerm>(function, std::move(operands), result),
                          constant);
}

TermPtr Binder::ternary(const Node& node)
{
    ConditionPtr choice = condition(node.children[0]);
    TermPtr whenTrue = term(node.children[1]);
    TermPtr whenFalse = term(node.children[2]);
    Type type = whenTrue->type();
    const Type& other = whenFalse->type();
    type.types |= other.types;
    type.elements |= other.elements;
    type.count = type.count == other.count ? type.count : std::nullopt;
    return std::make_shared<TernaryTerm>(std::move(choice), std::move(whenTrue),
                                         std::move(whenFalse), type);
}

} // namespace predicate
