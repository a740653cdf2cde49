// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/termbinder.h"

#include "platform/predicate/binding/calls.h"
#include "platform/predicate/matching/arithmetic.h"
#include "platform/predicate/text/sentences.h"

namespace predicate {

namespace {

constexpr Types anything = type::scalar | type::list;

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

/// How an error sentence names the base of a path.
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

} // namespace

TermPtr TermBinder::term(const Node& node, Reading reading)
{
    switch (node.kind) {
    case NodeKind::Constant: return m_names.constant(node, reading);
    case NodeKind::Name: return m_names.name(node, reading);
    case NodeKind::Variable:
        return m_context.failedTerm(node.position, quoted("$" + node.name) + " has no value.");
    case NodeKind::Self: return std::make_shared<EntryTerm>();
    case NodeKind::List: return list(node, reading);
    case NodeKind::Chain: return chain(node, reading);
    case NodeKind::Negation: return negation(node);
    case NodeKind::Path: return path(node, reading);
    case NodeKind::Call: return call(node);
    case NodeKind::Now: return constantTerm(Value::date(m_context.settings().now));
    case NodeKind::Cast: return cast(node);
    default: return ternary(node);
    }
}

Terms TermBinder::terms(const std::vector<Node>& nodes, Reading reading)
{
    Terms out;
    for (const Node& node : nodes)
        out.push_back(term(node, reading));
    return out;
}

TermPtr TermBinder::list(const Node& node, Reading reading)
{
    Terms elements;
    for (const Node& child : node.children) {
        reading.text = reading.text != nullptr ? &child : nullptr;
        elements.push_back(term(child, reading));
        if ((elements.back()->type().types & type::entry) != 0)
            return m_context.failedTerm(child.position, "SELF can only be compared with nil.");
    }
    return listTerm(std::move(elements));
}

TermPtr TermBinder::chain(const Node& node, Reading reading)
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
        return m_context.failedTerm(node.position, spelled + " needs numbers; "
                                                       + m_context.sourceIs(node.children[i], types)
                                                       + ".");
    }
    const bool whole = (all & ~type::wholeNumber) == 0 && node.name.front() != '^';
    const Types result = whole ? type::integer : type::integer | type::real;
    const bool constant = areConstant(operands);
    return foldedConstant(
        std::make_shared<ChainTerm>(node.name, std::move(operands), Type{result, type::nil, {}}),
        constant);
}

TermPtr TermBinder::negation(const Node& node)
{
    Terms operands = terms(node.children);
    const Type type = operands.front()->type();
    if (!type.fits(type::number))
        return m_context.failedTerm(
            node.position,
            "- needs a number; " + m_context.sourceIs(node.children.front(), type.types) + ".");
    const bool constant = areConstant(operands);
    const auto function = [](std::span<const Value> values, Match&) {
        return negated(values.front());
    };
    const Type result{static_cast<Types>(type::integer | (type.types & type::real)), type::nil, {}};
    return foldedConstant(std::make_shared<CallTerm>(function, std::move(operands), result),
                          constant);
}

TermPtr TermBinder::ternary(const Node& node)
{
    ConditionPtr choice = m_condition(node.children[0]);
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

TermPtr TermBinder::path(const Node& node, Reading reading)
{
    const Node& base = node.children.front();
    std::size_t next = 1;
    TermPtr result;
    if (base.kind == NodeKind::Self && node.children[1].kind == NodeKind::Member) {
        result = m_names.field(node.children[1].name, node.children[1].position, {});
        next = 2;
    } else {
        result = term(base, reading.onlyText());
    }
    while (next < node.children.size() && !m_context.failed()) {
        const Node& suffix = node.children[next];
        if (isPlace(suffix.kind))
            result = element(node, std::move(result), next);
        else
            result = member(node, std::move(result), node.children[next++]);
    }
    return result;
}

TermPtr TermBinder::member(const Node& path, TermPtr base, const Node& member)
{
    const std::string name = member.kind == NodeKind::Size ? "@count" : member.name;
    const bool length = name == "length" && base->type().fits(type::anyText);
    const bool count = name == "@count" && base->type().fits(type::list);
    if (!length && !count)
        return m_context.failedTerm(path.position,
                                    owner(path) + " has no member " + quoted(name) + ".");
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

ElementTerm::Place TermBinder::place(const Node& index)
{
    using Kind = ElementTerm::Place::Kind;
    if (index.kind != NodeKind::Index)
        return {index.kind == NodeKind::First ? Kind::First : Kind::Last, nullptr};
    const Node& written = index.children.front();
    TermPtr number = term(written);
    if (!number->type().fits(type::wholeNumber))
        m_context.fail(written.position, "The place in a list is a whole number; "
                                             + m_context.sourceIs(written, number->type().types)
                                             + ".");
    return {Kind::Number, std::move(number)};
}

/// Binds all consecutive indices of the path from `next` on.
TermPtr TermBinder::element(const Node& path, TermPtr base, std::size_t& next)
{
    std::vector<ElementTerm::Place> places;
    Type type = base->type();
    for (; next < path.children.size() && isPlace(path.children[next].kind); ++next) {
        if (!type.fits(type::list))
            return m_context.failedTerm(
                path.position, "Only a list has elements; "
                                   + m_context.sourceIs(path.children.front(), type.types) + ".");
        places.push_back(place(path.children[next]));
        if (m_context.failed())
            return base;
        // The element types of nested lists are not known.
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

TermPtr TermBinder::call(const Node& node)
{
    const FunctionInfo* function = calledFunction(m_context, node);
    if (function == nullptr)
        return std::make_shared<ConstantTerm>(Value(), Type{});
    return callTerm(m_context, node, *function, terms(node.children));
}

TermPtr TermBinder::cast(const Node& node)
{
    const CastTarget target = castTarget(m_context, node);
    if (target == CastTarget::None)
        return std::make_shared<ConstantTerm>(Value(), Type{});
    const Node& operand = node.children[0];
    Reading reading;
    reading.dates = target == CastTarget::Date && isText(operand);
    const TermPtr bound = term(operand, reading);
    return reading.dates ? bound : castTerm(m_context, node, target, bound);
}

} // namespace predicate
