// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/bindcontext.h"
#include "platform/predicate/matching/functions.h"

namespace predicate {

// Calls of functions and casts. The caller binds the arguments in between: the first mistake from
// left to right counts.

/// The function that the node calls. Null after a failure: there is none of the name, or it takes
/// another number of arguments.
const FunctionInfo* calledFunction(BindContext& context, const Node& node);
TermPtr
callTerm(BindContext& context, const Node& node, const FunctionInfo& called, Terms arguments);

enum class CastTarget { None, Date, Number, Text };

/// None after a failure: the cast names no type.
CastTarget castTarget(BindContext& context, const Node& node);
TermPtr castTerm(BindContext& context, const Node& node, CastTarget target, TermPtr operand);

} // namespace predicate
