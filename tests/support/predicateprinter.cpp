// SPDX-License-Identifier: MIT
#include "support/predicateprinter.h"

#include "platform/base/ascii.h"
#include "platform/predicate/syntax/token.h"
#include "platform/predicate/text/utf16.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

using namespace predicate;

namespace {

class Printer
{
public:
    Printed run(const Node& root)
    {
        condition(root);
        return {std::move(m_text), std::move(m_arguments)};
    }

private:
    void condition(const Node& node);
    void part(const Node& node);
    void comparison(const Node& node);
    void expression(const Node& node);
    void operand(const Node& node);
    void path(const Node& node);
    std::size_t keyPath(const Node& node);
    void suffix(const Node& node);
    void constant(const Constant& constant);
    void argument(const Constant& value, std::string_view format);
    void text(std::string_view text);
    void name(const std::string& name);
    void list(const std::vector<Node>& nodes, std::size_t from = 0);

    std::string m_text;
    Arguments m_arguments;
};

bool isWord(std::string_view text)
{
    return !text.empty() && isWordStart(static_cast<unsigned char>(text.front()))
           && std::all_of(text.begin(), text.end(),
                          [](char c) { return isWordPart(static_cast<unsigned char>(c)); });
}

bool isPlainName(std::string_view name)
{
    return isWord(!name.empty() && name.front() == '@' ? name.substr(1) : name);
}

bool needsEscape(std::string_view name)
{
    const std::u16string word = utf16(name);
    const std::string lower = asciiLowered(name);
    return reservedSign(word) != Sign::None || lower == "first" || lower == "last"
           || lower == "size";
}

bool isNegative(const Constant& constant)
{
    if (const auto* integer = std::get_if<std::int64_t>(&constant.value))
        return *integer < 0;
    const auto* real = std::get_if<double>(&constant.value);
    return real != nullptr && std::signbit(*real);
}

void Printer::condition(const Node& node)
{
    switch (node.kind) {
    case NodeKind::True: m_text += "TRUEPREDICATE"; break;
    case NodeKind::False: m_text += "FALSEPREDICATE"; break;
    case NodeKind::Not:
        m_text += "NOT ";
        part(node.children.front());
        break;
    case NodeKind::And:
    case NodeKind::Or:
        for (const Node& child : node.children) {
            if (&child != &node.children.front())
                m_text += node.kind == NodeKind::And ? " AND " : " OR ";
            part(child);
        }
        break;
    default: comparison(node); break;
    }
}

void Printer::part(const Node& node)
{
    const bool compound = node.kind == NodeKind::And || node.kind == NodeKind::Or;
    m_text += compound ? "(" : "";
    condition(node);
    m_text += compound ? ")" : "";
}

void Printer::comparison(const Node& node)
{
    if (node.quantifier != Quantifier::One)
        m_text.append(spelling(node.quantifier)) += ' ';
    expression(node.children[0]);
    m_text += ' ';
    m_text.append(spelling(node.comparison)).append(spelling(node.options)) += ' ';
    expression(node.children[1]);
}

void Printer::expression(const Node& node)
{
    switch (node.kind) {
    case NodeKind::Constant: constant(node.value); break;
    case NodeKind::Name: name(node.name); break;
    case NodeKind::Variable: m_text += '$' + node.name; break;
    case NodeKind::Self: m_text += "SELF"; break;
    case NodeKind::List:
        m_text += '{';
        list(node.children);
        m_text += '}';
        break;
    case NodeKind::Chain:
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            if (i > 0)
                m_text += node.name[i - 1] == '^' ? std::string(" ** ")
                                                  : std::string(" ") + node.name[i - 1] + ' ';
            operand(node.children[i]);
        }
        break;
    case NodeKind::Negation:
        m_text += '-';
        operand(node.children.front());
        break;
    case NodeKind::Path: path(node); break;
    case NodeKind::Now: m_text += "now()"; break;
    case NodeKind::Ternary:
        m_text += "TERNARY(";
        condition(node.children.front());
        m_text += ", ";
        list(node.children, 1);
        m_text += ')';
        break;
    default:
        m_text += (node.kind == NodeKind::Cast ? "CAST" : node.name) + "(";
        list(node.children);
        m_text += ')';
        break;
    }
}

/// Inside another expression.
void Printer::operand(const Node& node)
{
    const bool loose = node.kind == NodeKind::Chain || node.kind == NodeKind::Negation
                       || node.kind == NodeKind::Path || isNegative(node.value);
    m_text += loose ? "(" : "";
    expression(node);
    m_text += loose ? ")" : "";
}

void Printer::list(const std::vector<Node>& nodes, std::size_t from)
{
    for (std::size_t i = from; i < nodes.size(); ++i) {
        m_text += i > from ? ", " : "";
        expression(nodes[i]);
    }
}

void Printer::path(const Node& node)
{
    std::size_t next = keyPath(node);
    if (next == 0) {
        operand(node.children.front());
        next = 1;
    }
    for (std::size_t i = next; i < node.children.size(); ++i)
        suffix(node.children[i]);
}

/// A name and members that are no words can only be an argument; the number of children it took.
std::size_t Printer::keyPath(const Node& node)
{
    const Node& base = node.children.front();
    if (base.kind != NodeKind::Name && base.kind != NodeKind::Self)
        return 0;
    std::string path = base.kind == NodeKind::Self ? "SELF" : base.name;
    bool plain = base.kind == NodeKind::Self || isPlainName(base.name);
    std::size_t next = 1;
    for (; next < node.children.size() && node.children[next].kind == NodeKind::Member; ++next) {
        plain = plain && isPlainName(node.children[next].name);
        path += '.' + node.children[next].name;
    }
    if (plain)
        return 0;
    argument(Constant{std::move(path)}, "%K");
    return next;
}

void Printer::suffix(const Node& node)
{
    switch (node.kind) {
    case NodeKind::Member:
        m_text += '.';
        name(node.name);
        break;
    case NodeKind::First: m_text += "[FIRST]"; break;
    case NodeKind::Last: m_text += "[LAST]"; break;
    case NodeKind::Size: m_text += "[SIZE]"; break;
    default:
        m_text += '[';
        expression(node.children.front());
        m_text += ']';
        break;
    }
}

void Printer::argument(const Constant& value, std::string_view format)
{
    m_text += format;
    m_arguments.push_back(value);
}

void Printer::name(const std::string& name)
{
    if (!isPlainName(name)) {
        argument(Constant{name}, "%K");
        return;
    }
    m_text += (needsEscape(name) ? "#" : "") + name;
}

void Printer::text(std::string_view text)
{
    m_text += '"';
    for (const char c : text) {
        switch (c) {
        case '\n': m_text += "\\n"; break;
        case '\r': m_text += "\\r"; break;
        case '\t': m_text += "\\t"; break;
        case '"':
        case '\\':
            m_text += '\\';
            m_text += c;
            break;
        default: m_text += c; break;
        }
    }
    m_text += '"';
}

std::string realText(double value)
{
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    std::string text(digits.data(), end);
    if (text.find_first_of(".e") == std::string::npos)
        text += ".0"; // else it would be read as an integer
    return text;
}

void Printer::constant(const Constant& constant)
{
    struct Visitor
    {
        Printer& printer;
        void operator()(Nil) const { printer.m_text += "NIL"; }
        void operator()(bool value) const { printer.m_text += value ? "TRUE" : "FALSE"; }
        void operator()(std::int64_t value) const { printer.m_text += std::to_string(value); }
        void operator()(std::uint64_t value) const { printer.m_text += std::to_string(value); }
        void operator()(double value) const { printer.m_text += realText(value); }
        void operator()(const std::string& value) const { printer.text(value); }
        void operator()(Date value) const { printer.argument(Constant{value}, "%@"); }
        void operator()(const Constant::List&) const {} // lists are nodes
    };
    std::visit(Visitor{*this}, constant.value);
}

} // namespace

Printed print(const Tree& tree)
{
    return Printer().run(tree.root);
}
