// SPDX-License-Identifier: MIT
#pragma once

#include "platform/base/result.h"

#include <filesystem>
#include <string>
#include <vector>

/// A case that does not hold.
struct CaseFailure
{
    std::string name;
    std::string predicate;
    std::string instead; ///< what came instead of what had to
};

struct CaseOutcomes
{
    std::size_t cases = 0;
    std::vector<CaseFailure> failures;
};

/// Tries the cases of a file with a JSON object in each line. A case has a `predicate`, which may
/// have `args`, and some of these:
///
///   name, id            for people
///   expect              what it must be for the `entry`: true, false or "error"
///   entry               an object of fields, or the name of one that an earlier line defined
///   now, utcOffset      the moment and the seconds ahead of UTC that it is built with
///   error               the sentence that building must fail with
///   stage, position     where building must fail: "parse" or "bind", and a place in the text
///   parses, binds       that it must parse, and bind or not
///   same                another text that parses to the same tree
///   looksAt             the fields that it asks for
///   known, possible     whether it is possible when only these fields of the entry are known
///   alert               the text of an alert about a mistake at the position, which says “Why.”
///
/// Instead of a predicate a line may have `ascending`: constants, each less than all that follow.
/// A line with `define` gives an entry a name.
Result<CaseOutcomes> tryPredicateCases(const std::filesystem::path& file);
