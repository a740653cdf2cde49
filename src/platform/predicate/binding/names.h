// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/bindcontext.h"

#include <string>

namespace predicate {

/// How the names and texts on one side of a comparison are read. The other side decides.
struct Reading
{
    Types symbols = type::nil;  ///< names of this symbolic type have values
    bool typeIsLogType = false; ///< the name `type` means the message type
    bool dates = false;         ///< texts are dates
    const Node* text =
        nullptr; ///< the expression that is probably a text without quotes, if a name is unknown

    Reading onlyText() const { return {type::nil, false, false, text}; }
};

struct Readings
{
    Reading left;
    Reading right;
};

/// How the sides of a comparison are read, as far as the tree tells.
Readings readingsOf(const Node& comparison);

/// Whether the operator compares values: names can stand for them, and texts can be dates.
bool comparesValues(Operator comparison);

/// Binds constants and names to symbolic values, dates and fields.
class NameBinder
{
public:
    explicit NameBinder(BindContext& context) : m_context(context) {}

    TermPtr constant(const Node& node, Reading reading);
    TermPtr name(const Node& node, Reading reading);
    TermPtr field(const std::string& name, std::size_t position, Reading reading);

private:
    BindContext& m_context;
};

/// A constant with the type of its value.
TermPtr constantTerm(const Value& value);
Type typeOf(const Value& value);

} // namespace predicate
