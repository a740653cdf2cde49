// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entryfilter.h"
#include "platform/predicate/predicate.h"

/// A predicate as the filter of a stream of entries. One stream at a time: it has working memory.
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
    mutable predicate::Matcher m_matcher; // its memory is no part of what the filter is
};
