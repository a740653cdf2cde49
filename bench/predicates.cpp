// SPDX-License-Identifier: MIT
// Evaluates a file of predicate cases and prints those that do not hold, with what came instead.
#include "support/predicatecases.h"

#include <cstdio>

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fprintf(stderr, "usage: predicates FILE\n");
        return 2;
    }
    const auto outcomes = tryPredicateCases(arguments[1]);
    if (!outcomes) {
        std::fprintf(stderr, "%s\n", outcomes.error().description.c_str());
        return 2;
    }
    for (const CaseFailure& failure : outcomes->failures)
        std::printf("%s: %s\n    %s\n", failure.name.c_str(), failure.predicate.c_str(),
                    failure.instead.c_str());
    const std::size_t failures = outcomes->failures.size();
    std::printf("%zu cases, %zu hold, %zu do not\n", outcomes->cases, outcomes->cases - failures,
                failures);
    return failures == 0 ? 0 : 1;
}
