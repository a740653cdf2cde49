// SPDX-License-Identifier: MIT
#include "platform/predicate/binder.h"
#include "platform/predicate/sentences.h"

#include <algorithm>

namespace predicate {

namespace {

constexpr Types anything = type::scalar | type::list;

/// An aggregate function takes its numbers from one list or from its arguments, and leaves nil out.
Value aggregated(const FunctionInfo& function,
                 std::span<const Value> arguments,
                 bool fromList,
                 Match& match)
{
    if (fromList && arguments.front().kind() != Value::Kind::List)
        return {};
    std::vector<Value>& elements = match.newList();
    for (const Value& element : fromList ? arguments.front().asList() : arguments) {
        if (element.isUnknown())
            return element;
        const bool counts = function.argument != type::number || element.isNumber();
        if (!element.isNil() && counts)
            elements.push_back(element);
    }
    return function.call(elements, match);
}

bool isPlace(NodeKind kind)
{
    return kind == NodeKind::Index || kind == NodeKind::First || kind == NodeKind::Last;
}

TermPtr constantElement(TermPtr list, std::vector<ElementTerm::Place> places)
{
    const TermPtr element = foldedConstant(
        std::make_shared<ElementTerm>(std::move(list), std::move(places), Type{}), true);
    return std::make_shared<ConstantTerm>(*element->constant(), typeOf(*element->constant()));
}

/// What a sentence calls the thing that a path begins with.
std::string owner(const Node& path)
{
    const Node& base = path.children.front();
    if (base.kind == NodeKind::Name)
        return quoted(base.name);
    if (base.kind != NodeKind::Self)
        return "This";
    const Node& field = path.children[1];
    return field.kind == NodeKind::Member ? quoted(field.name) : "SELF";
}

std::string counted(std::size_t count)
{
    return count == 1 ? "one argument" : "two arguments";
}

} // namespace

TermPtr Binder::path(const Node& node, Reading reading)
{
    const Node& base = node.children.front();
    std::size_t next = 1;
    TermPtr result;
    if (base.kind == NodeKind::Self && node.children[1].kind == NodeKind::Member) {
        result = field(node.children[1].name, node.children[1].position, {});
        next = 2;
    } else {
        result = term(base, reading.onlyText());
    }
    while (next < node.children.size() && !failed()) {
        const Node& suffix = node.children[next];
        if (isPlace(suffix.kind))
            result = element(node, std::move(result), next);
        else
            result = member(node, std::move(result), node.children[next++]);
    }
    return result;
}

TermPtr Binder::member(const Node& path, TermPtr base, const Node& member)
{
    const std::string name = member.kind == NodeKind::Size ? "@count" : member.name;
    const bool length = name == "length" && base->type().fits(type::anyText);
    const bool count = name == "@count" && base->type().fits(type::list);
    if (!length && !count)
        return failedTerm(path.position, owner(path) + " has no member " + quoted(name) + ".");
    const auto function = [length](std::span<const Value> values, Match&) {
        if (length)
            return textLength(values.front());
        const bool isList = values.front().kind() == Value::Kind::List;
        return isList ? Value::integer(static_cast<std::int64_t>(values.front().asList().size()))
                      : Value();
    };
    Terms arguments{std::move(base)};
    const bool constant = areConstant(arguments);
    const Type type{type::integer, type::nil, {}};
    return foldedConstant(std::make_shared<CallTerm>(function, std::move(arguments), type),
                          constant);
}

ElementTerm::Place Binder::place(const Node& index)
{
    using Kind = ElementTerm::Place::Kind;
    if (index.kind != NodeKind::Index)
        return {index.kind == NodeKind::First ? Kind::First : Kind::Last, nullptr};
    const Node& written = index.children.front();
    TermPtr number = term(written);
    if (!number->type().fits(type::wholeNumber))
        fail(written.position, "The place in a list is a whole number; "
                                   + sourceIs(written, number->type().types) + ".");
    return {Kind::Number, std::move(number)};
}

/// Takes up all places that follow one another in the path from `next` on.
TermPtr Binder::element(const Node& path, TermPtr base, std::size_t& next)
{
    std::vector<ElementTerm::Place> places;
    Type type = base->type();
    for (; next < path.children.size() && isPlace(path.children[next].kind); ++next) {
        if (!type.fits(type::list))
            return failedTerm(path.position, "Only a list has elements; "
                                                 + sourceIs(path.children.front(), type.types)
                                                 + ".");
        places.push_back(place(path.children[next]));
        if (failed())
            return base;
        // Of lists in lists only the outermost is known in detail.
        type = {type.elements, (type.elements & type::list) != 0 ? anything : type::nil, {}};
        if (base->constant() != nullptr && places.size() == 1 && places.front().isConstant()) {
            base = constantElement(base, std::move(places));
            type = base->type();
            places.clear();
        }
    }
    return places.empty() ? base
                          : std::make_shared<ElementTerm>(std::move(base), std::move(places), type);
}

TermPtr Binder::call(const Node& node)
{
    const FunctionInfo* function = functionNamed(node.name);
    if (function == nullptr) {
        const std::string_view meant = suggestedFunction(node.name);
        const std::string hint =
            meant.empty() ? std::string() : " Did you mean " + std::string(meant) + "?";
        return failedTerm(node.position, "There is no function " + quoted(node.name) + "." + hint);
    }
    if (function->takesList())
        return listCall(node, *function);
    if (node.children.size() != function->count)
        return failedTerm(node.position,
                          quoted(node.name) + " takes " + counted(function->count) + ".");
    Terms arguments = terms(node.children);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Type& type = arguments[i]->type();
        if (!type.fits(function->argument)) {
            const char* wanted = function->argument == type::anyText  ? "a text"
                                 : function->argument == type::number ? "a number"
                                                                      : "a whole number";
            return failedTerm(node.position, quoted(node.name) + " needs " + wanted + "; "
                                                 + sourceIs(node.children[i], type.types) + ".");
        }
    }
    const bool constant = areConstant(arguments);
    const auto checked = [function](std::span<const Value> values, Match& match) {
        // A value of several possible types may turn out to be of the wrong one.
        const bool fit = std::all_of(values.begin(), values.end(), [function](const Value& value) {
            return function->argument == type::anyText ? value.isText() : value.isNumber();
        });
        return fit ? function->call(values, match) : Value();
    };
    const Type type{function->result, type::nil, {}};
    return foldedConstant(std::make_shared<CallTerm>(checked, std::move(arguments), type),
                          constant);
}

TermPtr Binder::listCall(const Node& node, const FunctionInfo& function)
{
    Terms arguments = terms(node.children);
    const bool fromList = arguments.size() == 1;
    if (arguments.empty() || (fromList && !arguments.front()->type().fits(type::list)))
        return failedTerm(node.position, quoted(node.name) + " needs a list or several arguments.");
    Types all = type::nil;
    for (const TermPtr& argument : arguments)
        all |= fromList ? argument->type().elements : argument->type().types;
    if ((all & type::entry) != 0)
        return failedTerm(node.position, "SELF can only be compared with nil.");
    if ((all & ~function.argument) != 0)
        return failedTerm(node.position, quoted(node.name) + " needs numbers.");
    const bool constant = areConstant(arguments);
    const auto aggregate = [&function, fromList](std::span<const Value> values, Match& match) {
        return aggregated(function, values, fromList, match);
    };
    const Type type{function.result, type::nil, {}};
    return foldedConstant(
        std::make_shared<CallTerm>(aggregate, std::move(arguments), type, !fromList), constant);
}

TermPtr Binder::cast(const Node& node)
{
    const Node& operandNode = node.children[0];
    const Node& typeNode = node.children[1];
    const auto* name = std::get_if<std::string>(&typeNode.value.value);
    if (typeNode.kind != NodeKind::Constant || name == nullptr)
        return failedTerm(
            typeNode.position,
            R"(CAST needs the name of a type in quotes: "NSDate", "NSNumber" or "NSString".)");
    if (*name == "NSDate") {
        Reading dates;
        dates.dates = true;
        if (isText(operandNode))
            return term(operandNode, dates);
        const auto toDate = [offset = m_settings.utcOffset](std::span<const Value> values, Match&) {
            return castToDate(values.front(), offset);
        };
        return castTo(node, term(operandNode), type::number | type::anyText, type::date, toDate);
    }
    const auto toNumber = [](std::span<const Value> values, Match&) {
        return castToNumber(values.front());
    };
    const auto toText = [](std::span<const Value> values, Match& match) {
        return castToText(values.front(), match);
    };
    if (*name == "NSNumber")
        return castTo(node, term(operandNode), type::number | type::anyText | type::date,
                      type::integer | type::real, toNumber);
    if (*name == "NSString")
        return castTo(node, term(operandNode), type::number | type::anyText, type::text, toText);
    return failedTerm(typeNode.position,
                      quoted(*name)
                          + " is not a type here; it can be NSDate, NSNumber or NSString.");
}

TermPtr
Binder::castTo(const Node& node, TermPtr operand, Types from, Types to, CallTerm::Function function)
{
    const Type type = operand->type();
    if (!type.fits(from)) {
        const std::string given = sourceIs(node.children[0], type.types);
        return failedTerm(node.position, given + ", which CAST can't make " + described(to) + ".");
    }
    Terms arguments{std::move(operand)};
    const bool constant = areConstant(arguments);
    return foldedConstant(std::make_shared<CallTerm>(std::move(function), std::move(arguments),
                                                     Type{to, type::nil, {}}),
                          constant);
}

} // namespace predicate
