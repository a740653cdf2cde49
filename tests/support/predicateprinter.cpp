// SPDX-License-Identifier: MIT
#include "support/predicateprinter.h"

#include "platform/predicate/syntax/token.h"

#include <algorithm>

using namespace predicate;

namespace {

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

class Printer
{
public:
    Printed run(const Node& root)
    {
        condition(root);
        return {std::move(m_text), std::move(m_arguments)};
    }

private:
    void condition(const Node& node)
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

    void part(const Node& node)
    {
        m_text += '(';
        condition(node);
        m_text += ')';
    }

    void comparison(const Node& node)
    {
        m_text.append(spelling(node.quantifier)) += ' ';
        expression(node.children[0]);
        m_text.append(" ").append(spelling(node.comparison)).append(spelling(node.options)) += ' ';
        expression(node.children[1]);
    }

    void expression(const Node& node)
    {
        switch (node.kind) {
        case NodeKind::Constant: argument(node.value, "%@"); break;
        case NodeKind::Name: name(node.name); break;
        case NodeKind::Variable: m_text += '$' + node.name; break;
        case NodeKind::Self: m_text += "SELF"; break;
        case NodeKind::List: list("{", node.children, "}"); break;
        case NodeKind::Chain:
            for (std::size_t i = 0; i < node.children.size(); ++i) {
                if (i > 0)
                    m_text += node.name[i - 1] == '^' ? "**" : std::string(1, node.name[i - 1]);
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
            list(", ", {node.children.begin() + 1, node.children.end()}, ")");
            break;
        case NodeKind::Cast: list("CAST(", node.children, ")"); break;
        default: list(node.name + '(', node.children, ")"); break;
        }
    }

    void operand(const Node& node)
    {
        const bool loose = node.kind == NodeKind::Chain || node.kind == NodeKind::Negation
                           || node.kind == NodeKind::Path;
        m_text += loose ? "(" : "";
        expression(node);
        m_text += loose ? ")" : "";
    }

    void list(const std::string& open, const std::vector<Node>& nodes, std::string_view close)
    {
        m_text += open;
        for (const Node& node : nodes) {
            m_text += &node == &nodes.front() ? "" : ", ";
            expression(node);
        }
        m_text += close;
    }

    void path(const Node& node)
    {
        std::size_t next = keyPath(node);
        if (next == 0)
            operand(node.children[next++]);
        for (; next < node.children.size(); ++next)
            suffix(node.children[next]);
    }

    /// A name and members that are no words can only be an argument; the number of children it
    /// took.
    std::size_t keyPath(const Node& node)
    {
        const Node& base = node.children.front();
        if (base.kind != NodeKind::Name && base.kind != NodeKind::Self)
            return 0;
        std::string path = base.kind == NodeKind::Self ? "SELF" : base.name;
        bool plain = base.kind == NodeKind::Self || isPlainName(base.name);
        std::size_t next = 1;
        for (; next < node.children.size() && node.children[next].kind == NodeKind::Member;
             ++next) {
            plain = plain && isPlainName(node.children[next].name);
            path += '.' + node.children[next].name;
        }
        if (!plain)
            argument(Constant{std::move(path)}, "%K");
        return plain ? 0 : next;
    }

    void suffix(const Node& node)
    {
        switch (node.kind) {
        case NodeKind::Member:
            m_text += '.';
            name(node.name);
            break;
        case NodeKind::First: m_text += "[FIRST]"; break;
        case NodeKind::Last: m_text += "[LAST]"; break;
        case NodeKind::Size: m_text += "[SIZE]"; break;
        default: list("[", node.children, "]"); break;
        }
    }

    void argument(const Constant& value, std::string_view format)
    {
        m_text += format;
        m_arguments.push_back(value);
    }

    void name(const std::string& name)
    {
        if (isWord(name))
            m_text += '#' + name;
        else if (isPlainName(name))
            m_text += name;
        else
            argument(Constant{name}, "%K");
    }

    std::string m_text;
    Arguments m_arguments;
};

} // namespace

Printed print(const Tree& tree)
{
    return Printer().run(tree.root);
}
