// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace predicate {

/// The outcome for an entry, or for all entries of which only some fields are known.
enum class Truth : std::uint8_t { False, True, Unknown };

inline Truth truth(bool value)
{
    return value ? Truth::True : Truth::False;
}
inline Truth negation(Truth value)
{
    return value == Truth::Unknown ? value : truth(value == Truth::False);
}

} // namespace predicate
