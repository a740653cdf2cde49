// SPDX-License-Identifier: MIT
#pragma once

#include "support/madeupentry.h"

#include <random>
#include <string>
#include <vector>

/// Makes up predicates that parse and bind, and entries on which their outcomes differ.
class PredicateGenerator
{
public:
    /// Texts are among `texts` when there are any.
    explicit PredicateGenerator(unsigned seed, std::vector<std::string> texts = {})
        : m_random(seed)
        , m_texts(std::move(texts))
    {
    }

    /// `depth` bounds how deep conditions and expressions stand in one another.
    std::string condition(int depth);
    /// A single comparison.
    std::string comparison(int depth);
    /// A regular expression of these characters, often a plain text.
    std::string expression(int depth);
    MadeUpEntry entry();
    /// A text of few different characters, some of which fold in uncommon ways.
    std::string text();

    std::size_t below(std::size_t limit) { return m_random() % limit; }
    bool sometimes() { return below(3) == 0; }
    const std::string& oneOf(const std::vector<std::string>& choices)
    {
        return choices[below(choices.size())];
    }

private:
    std::string textExpression(int depth);
    std::string numberExpression(int depth);
    std::string options();
    std::string textComparison(int depth);
    std::string numberComparison(int depth);
    std::string listComparison(int depth);
    std::string quotedText();

    std::mt19937 m_random;
    std::vector<std::string> m_texts;
};
