// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/calls.h"

#include "platform/predicate/text/sentences.h"

#include <algorithm>

namespace predicate {

namespace {

/// Calls a function over the elements of one list, or over its arguments, without those that are
/// nil.
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

std::string counted(std::size_t count)
{
    return count == 1 ? "one argument" : "two arguments";
}

TermPtr
listCall(BindContext& context, const Node& node, const FunctionInfo& function, Terms arguments)
{
    const bool fromList = arguments.size() == 1;
    if (arguments.empty() || (fromList && !arguments.front()->type().fits(type::list)))
        return context.failedTerm(node.position,
                                  quoted(node.name) + " needs a list or several arguments.");
    Types all = type::nil;
    for (const TermPtr& argument : arguments)
        all |= fromList ? argument->type().elements : argument->type().types;
    if ((all & type::entry) != 0)
        return context.failedTerm(node.position, "SELF can only be compared with nil.");
    if ((all & ~function.argument) != 0)
        return context.failedTerm(node.position, quoted(node.name) + " needs numbers.");
    const bool constant = areConstant(arguments);
    const auto aggregate = [&function, fromList](std::span<const Value> values, Match& match) {
        return aggregated(function, values, fromList, match);
    };
    const Type type{function.result, type::nil, {}};
    return foldedConstant(
        std::make_shared<CallTerm>(aggregate, std::move(arguments), type, !fromList), constant);
}

TermPtr castTo(BindContext& context,
               const Node& node,
               TermPtr operand,
               Types from,
               Types to,
               CallTerm::Function function)
{
    const Type type = operand->type();
    if (!type.fits(from)) {
        const std::string given = context.sourceIs(node.children[0], type.types);
        return context.failedTerm(node.position,
                                  given + ", which CAST can't make " + described(to) + ".");
    }
    Terms arguments{std::move(operand)};
    const bool constant = areConstant(arguments);
    return foldedConstant(std::make_shared<CallTerm>(std::move(function), std::move(arguments),
                                                     Type{to, type::nil, {}}),
                          constant);
}

} // namespace

const FunctionInfo* calledFunction(BindContext& context, const Node& node)
{
    const FunctionInfo* function = functionNamed(node.name);
    if (function == nullptr) {
        const std::string_view meant = suggestedFunction(node.name);
        const std::string hint =
            meant.empty() ? std::string() : " Did you mean " + std::string(meant) + "?";
        context.fail(node.position, "There is no function " + quoted(node.name) + "." + hint);
        return nullptr;
    }
    if (function->takesList() || node.children.size() == function->count)
        return function;
    context.fail(node.position, quoted(node.name) + " takes " + counted(function->count) + ".");
    return nullptr;
}

TermPtr
callTerm(BindContext& context, const Node& node, const FunctionInfo& called, Terms arguments)
{
    if (called.takesList())
        return listCall(context, node, called, std::move(arguments));
    const FunctionInfo* function = &called;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Type& type = arguments[i]->type();
        if (!type.fits(function->argument)) {
            const char* wanted = function->argument == type::anyText  ? "a text"
                                 : function->argument == type::number ? "a number"
                                                                      : "a whole number";
            return context.failedTerm(node.position,
                                      quoted(node.name) + " needs " + wanted + "; "
                                          + context.sourceIs(node.children[i], type.types) + ".");
        }
    }
    const bool constant = areConstant(arguments);
    const auto checked = [function](std::span<const Value> values, Match& match) {
        // An argument of several possible types may have the wrong one here.
        const bool fit = std::all_of(values.begin(), values.end(), [function](const Value& value) {
            return function->argument == type::anyText ? value.isText() : value.isNumber();
        });
        return fit ? function->call(values, match) : Value();
    };
    const Type type{function->result, type::nil, {}};
    return foldedConstant(std::make_shared<CallTerm>(checked, std::move(arguments), type),
                          constant);
}

CastTarget castTarget(BindContext& context, const Node& node)
{
    const Node& typeNode = node.children[1];
    const auto* name = std::get_if<std::string>(&typeNode.value.value);
    if (typeNode.kind != NodeKind::Constant || name == nullptr) {
        context.fail(
            typeNode.position,
            R"(CAST needs the name of a type in quotes: "NSDate", "NSNumber" or "NSString".)");
        return CastTarget::None;
    }
    if (*name == "NSDate")
        return CastTarget::Date;
    if (*name == "NSNumber")
        return CastTarget::Number;
    if (*name == "NSString")
        return CastTarget::Text;
    context.fail(typeNode.position,
                 quoted(*name) + " is not a type here; it can be NSDate, NSNumber or NSString.");
    return CastTarget::None;
}

TermPtr castTerm(BindContext& context, const Node& node, CastTarget target, TermPtr operand)
{
    constexpr Types castable = type::number | type::anyText;
    const auto toDate = [offset = context.settings().utcOffset](std::span<const Value> values,
                                                                Match&) {
        return castToDate(values.front(), offset);
    };
    const auto toNumber = [](std::span<const Value> values, Match&) {
        return castToNumber(values.front());
    };
    const auto toText = [](std::span<const Value> values, Match& match) {
        return castToText(values.front(), match);
    };
    switch (target) {
    case CastTarget::Date:
        return castTo(context, node, std::move(operand), castable, type::date, toDate);
    case CastTarget::Number:
        return castTo(context, node, std::move(operand), castable | type::date,
                      type::integer | type::real, toNumber);
    default: return castTo(context, node, std::move(operand), castable, type::text, toText);
    }
}

} // namespace predicate
