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
    const auto cases = readPredicateCases(arguments[1]);
    if (!cases) {
        std::fprintf(stderr, "%s\n", cases.error().description.c_str());
        return 2;
    }
    std::size_t failures = 0;
    for (const PredicateCase& predicateCase : *cases) {
        const std::string instead = shortfall(predicateCase);
        if (instead.empty())
            continue;
        ++failures;
        std::printf("%s: %s\n    %s\n", predicateCase.id.c_str(), predicateCase.predicate.c_str(),
                    instead.c_str());
    }
    std::printf("%zu cases, %zu hold, %zu do not\n", cases->size(), cases->size() - failures,
                failures);
    return failures == 0 ? 0 : 1;
}
