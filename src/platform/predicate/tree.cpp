// SPDX-License-Identifier: MIT
#include "platform/predicate/tree.h"

namespace predicate {

bool Node::operator==(const Node& other) const
{
    return kind == other.kind && comparison == other.comparison && quantifier == other.quantifier
           && options == other.options && name == other.name && value == other.value
           && children == other.children;
}

} // namespace predicate
