// SPDX-License-Identifier: MIT
#include "platform/predicate/parser.h"
#include "platform/predicate/sentences.h"
#include "platform/predicate/utf16.h"

#include <cmath>

namespace predicate {

namespace {

constexpr int deepestArgument = 100;

bool isNumber(const Constant& argument)
{
    if (const auto* real = std::get_if<double>(&argument.value))
        return std::isfinite(*real);
    return std::holds_alternative<bool>(argument.value)
           || std::holds_alternative<std::int64_t>(argument.value)
           || std::holds_alternative<std::uint64_t>(argument.value);
}

bool isSelf(std::string_view word)
{
    return reservedSign(utf16(word)) == Sign::Self;
}

} // namespace

Node Parser::formatArgument()
{
    const Token format = token();
    const std::u16string_view written = slice(format);
    if (m_argument == m_arguments.size())
        return failAtToken("Insufficient arguments: " + quoted(written)
                           + " has no value to stand for.");
    const Constant& argument = m_arguments[m_argument];
    const auto* text = std::get_if<std::string>(&argument.value);
    ++m_argument;
    switch (written.back()) {
    case u'@': ++m_index; return argumentNode(argument, format, 0);
    case u'K':
        if (text == nullptr)
            return failAtToken(quoted(written) + " needs the name of a field.");
        ++m_index;
        return keyPath(utf8(utf16(*text)), format);
    case u's':
        if (text == nullptr)
            return failAtToken(quoted(written) + " needs a text.");
        break;
    default:
        if (!isNumber(argument))
            return failAtToken(quoted(written) + " needs a number.");
        break;
    }
    ++m_index;
    return argumentNode(argument, format, 0);
}

/// The node that the argument would be if it could be written in the text.
Node Parser::argumentNode(const Constant& argument, const Token& format, int depth)
{
    Node node;
    node.kind = NodeKind::Constant;
    node.position = format.position;
    node.end = format.end;
    if (depth > deepestArgument)
        return fail(format.position,
                    "The list given for " + quoted(slice(format)) + " is nested too deeply.");
    if (std::holds_alternative<double>(argument.value) && !isNumber(argument))
        return fail(format.position, quoted(slice(format)) + " needs a number that is finite.");
    const auto* large = std::get_if<std::uint64_t>(&argument.value);
    const auto* list = std::get_if<Constant::List>(&argument.value);
    if (const auto* text = std::get_if<std::string>(&argument.value)) {
        node.value = Constant{utf8(utf16(*text))};
    } else if (large != nullptr && *large <= static_cast<std::uint64_t>(INT64_MAX)) {
        node.value = Constant{static_cast<std::int64_t>(*large)};
    } else if (list != nullptr) {
        node.kind = NodeKind::List;
        for (const Constant& element : *list)
            node.children.push_back(argumentNode(element, format, depth + 1));
    } else {
        node.value = argument;
    }
    return node;
}

/// `a.b.c`: a name and its members.
Node Parser::keyPath(const std::string& path, const Token& format)
{
    Node node;
    node.kind = NodeKind::Path;
    node.position = format.position;
    node.end = format.end;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t dot = std::min(path.find('.', start), path.size());
        Node part;
        part.kind = node.children.empty() ? NodeKind::Name : NodeKind::Member;
        part.position = format.position;
        part.end = format.end;
        part.name = path.substr(start, dot - start);
        if (node.children.empty() && isSelf(part.name)) {
            part.kind = NodeKind::Self;
            part.name.clear();
        }
        node.children.push_back(std::move(part));
        start = dot + 1;
    }
    if (node.children.size() > 1)
        return node;
    Node only = std::move(node.children.front());
    return only;
}

} // namespace predicate
