// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <tl/expected.hpp>

/// Why an operation failed, written for people: what was tried, on which file, and the reason.
struct Failure
{
    std::string description; ///< UTF-8, one or more sentences
};

/// A value, or the failure that stands in its place.
template <typename T>
using Result = tl::expected<T, Failure>;

/// Makes the failed Result of any type: `return failure("…");`
inline tl::unexpected<Failure> failure(std::string description)
{
    return tl::unexpected(Failure{std::move(description)});
}
