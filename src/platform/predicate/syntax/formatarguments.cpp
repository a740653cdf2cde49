// SPDX-License-Identifier: MIT
#include "platform/predicate/syntax/formatarguments.h"

#include "platform/predicate/text/sentences.h"
#include "platform/predicate/text/utf16.h"

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

Node nodeAt(const Token& format, NodeKind kind)
{
    Node node;
    node.kind = kind;
    node.position = format.position;
    node.end = format.end;
    return node;
}

/// The node of the argument, as if it were written in the text.
Node argumentNode(TokenReader& tokens, const Token& format, const Constant& argument, int depth = 0)
{
    Node node = nodeAt(format, NodeKind::Constant);
    if (depth > deepestArgument)
        return tokens.fail(format.position, "The list given for " + quoted(tokens.slice(format))
                                                + " is nested too deeply.");
    if (std::holds_alternative<double>(argument.value) && !isNumber(argument))
        return tokens.fail(format.position,
                           quoted(tokens.slice(format)) + " needs a number that is finite.");
    const auto* large = std::get_if<std::uint64_t>(&argument.value);
    const auto* list = std::get_if<Constant::List>(&argument.value);
    if (const auto* text = std::get_if<std::string>(&argument.value)) {
        node.value = Constant{utf8(utf16(*text))};
    } else if (large != nullptr && *large <= static_cast<std::uint64_t>(INT64_MAX)) {
        node.value = Constant{static_cast<std::int64_t>(*large)};
    } else if (list != nullptr) {
        node.kind = NodeKind::List;
        for (const Constant& element : *list)
            node.children.push_back(argumentNode(tokens, format, element, depth + 1));
    } else {
        node.value = argument;
    }
    return node;
}

/// `a.b.c`: a name and its members.
Node keyPath(const std::string& path, const Token& format)
{
    Node node = nodeAt(format, NodeKind::Path);
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t dot = std::min(path.find('.', start), path.size());
        Node part = nodeAt(format, node.children.empty() ? NodeKind::Name : NodeKind::Member);
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

} // namespace

Node FormatArguments::next(TokenReader& tokens)
{
    const Token format = tokens.token();
    const std::u16string_view written = tokens.slice(format);
    if (m_next == m_arguments.size())
        return tokens.failAtToken("Insufficient arguments: " + quoted(written)
                                  + " has no value to stand for.");
    const Constant& argument = m_arguments[m_next++];
    const auto* text = std::get_if<std::string>(&argument.value);
    const char16_t letter = written.back();
    if (letter == u'K' && text == nullptr)
        return tokens.failAtToken(quoted(written) + " needs the name of a field.");
    if (letter == u's' && text == nullptr)
        return tokens.failAtToken(quoted(written) + " needs a text.");
    const bool anyType = letter == u'@' || letter == u'K' || letter == u's';
    if (!anyType && !isNumber(argument))
        return tokens.failAtToken(quoted(written) + " needs a number.");
    tokens.skip();
    return letter == u'K' ? keyPath(utf8(utf16(*text)), format)
                          : argumentNode(tokens, format, argument);
}

} // namespace predicate
