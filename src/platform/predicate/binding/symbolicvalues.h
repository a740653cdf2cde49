// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/types.h"
#include "platform/predicate/matching/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace predicate {

/// Values of the field `type`.
namespace eventtype {
constexpr int activityCreate = 513;
constexpr int activityTransition = 514;
constexpr int userAction = 515;
constexpr int trace = 768;
constexpr int log = 1024;
constexpr int signpost = 1536;
constexpr int loss = 1792;
// These have names but no numbers, and are used with Value::symbol().
constexpr int state = 1;
constexpr int timesync = 2;
} // namespace eventtype

/// The value of a name of a symbolic type, in any case.
std::optional<Value> symbolicValue(Types symbolicType, std::string_view name);

/// The field that has a value of this name, or an empty text.
std::string_view fieldOfSymbol(std::string_view name);

/// “error, fault or …”: the names of a symbolic type without their synonyms.
std::string symbolicNames(Types symbolicType);

} // namespace predicate
