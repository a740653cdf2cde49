// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/tokenreader.h"

#include <string>

namespace predicate {

/// The values of the format arguments of a text, from left to right.
class FormatArguments
{
public:
    explicit FormatArguments(const Arguments& arguments) : m_arguments(arguments) {}

    /// The node for the format argument at the token, which is read. Fails when no value is left,
    /// or when it has the wrong type.
    Node next(TokenReader& tokens);

private:
    const Arguments& m_arguments;
    std::size_t m_next = 0;
};

} // namespace predicate
