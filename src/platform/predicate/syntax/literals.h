// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/constant.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace predicate {

/// The length of the number that the text begins with; 0 when it begins with none.
std::size_t numberLength(std::u16string_view text);

/// The value of a number as numberLength() measured it; none when it is beyond all reals.
std::optional<Constant> numberValue(std::u16string_view number);

/// What stands between the quotation marks, with its escapes resolved, as UTF-8.
std::string textValue(std::u16string_view inside);

} // namespace predicate
