// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/binding/bindcontext.h"
#include "platform/predicate/matching/functions.h"

namespace predicate {

// Calls of functions and casts. The caller binds the arguments between the two steps, so that
// errors are found from left to right.

/// The function that the node calls. Fails, and returns null, when there is none of this name or
/// the number of arguments is wrong.
const FunctionInfo* calledFunction(BindContext& context, const Node& node);
TermPtr
callTerm(BindContext& context, const Node& node, const FunctionInfo& called, Terms arguments);

enum class CastTarget { None, Date, Number, Text };

/// The type of a cast. Fails, and returns None, when it is not one.
CastTarget castTarget(BindContext& context, const Node& node);
TermPtr castTerm(BindContext& context, const Node& node, CastTarget target, TermPtr operand);

} // namespace predicate
