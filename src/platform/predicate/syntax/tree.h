// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/constant.h"
#include "platform/predicate/syntax/operators.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace predicate {

enum class NodeKind : std::uint8_t {
    // Expressions.
    Constant,
    Name,     ///< a word that may be a field
    Variable, ///< $name
    Self,
    List,
    Chain, ///< operands of one level of precedence, from left to right; `name` has a sign for each
           ///< but the first
    Negation, ///< unary minus
    Path,     ///< a base, then members and indices
    Member,
    Index,
    First,
    Last,
    Size,
    Call,
    Now,
    Cast,
    Ternary,
    // Conditions.
    Comparison,
    And,
    Or,
    Not,
    True,
    False
};

/// A node of a parsed predicate. Chains of AND, OR, arithmetic and members are lists, so the depth
/// of the tree is limited by the parentheses in the text.
struct Node
{
    NodeKind kind = NodeKind::False;
    Operator comparison = Operator::Equal;
    Quantifier quantifier = Quantifier::One;
    Options options;
    std::size_t position = 0; ///< where it begins, in UTF-16 units of the format text
    std::size_t end = 0;
    std::size_t operatorPosition = 0; ///< of a comparison
    std::string name; ///< of a name, variable, member or function; the signs of a chain
    Constant value;
    std::vector<Node> children;

    /// Compares the meaning, not the positions in the texts.
    bool operator==(const Node& other) const
    {
        return kind == other.kind && comparison == other.comparison
               && quantifier == other.quantifier && options == other.options && name == other.name
               && value == other.value && children == other.children;
    }
};

inline bool isCondition(const Node& node)
{
    return node.kind >= NodeKind::Comparison;
}

inline bool isText(const Node& node)
{
    return node.kind == NodeKind::Constant && std::holds_alternative<std::string>(node.value.value);
}

/// A parsed predicate and its format text, which is quoted in errors.
struct Tree
{
    Node root;
    std::u16string text;

    bool operator==(const Tree& other) const { return root == other.root; }
};

} // namespace predicate
