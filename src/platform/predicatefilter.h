// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entryfilter.h"
#include "platform/predicate/predicate.h"

/// Filters a stream of entries by a predicate. It has working memory, so it serves one stream at a
/// time.
class PredicateFilter : public logstore::EntryFilter
{
public:
    explicit PredicateFilter(predicate::Predicate predicate) : m_matcher(std::move(predicate)) {}

    bool matches(const logstore::Entry& entry) const override;
    bool mayMatch(const logstore::ProcessFacts& process) const override;
    bool mayMatch(const logstore::ProcessFacts& process,
                  std::string_view subsystem,
                  std::string_view category) const override;
    bool gaveUp() const override { return m_matcher.gaveUp(); }

private:
    mutable predicate::Matcher m_matcher; // its working memory is not part of the filter's value
};
