// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/syntax/constant.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace predicate {

/// The length of the number at the start of the text; 0 when there is none.
std::size_t numberLength(std::u16string_view text);

/// The value of a number as measured by numberLength(). No value when it is too large for a real.
std::optional<Constant> numberValue(std::u16string_view number);

/// The text between the quotation marks as UTF-8, with its escapes resolved.
std::string textValue(std::u16string_view inside);

} // namespace predicate
