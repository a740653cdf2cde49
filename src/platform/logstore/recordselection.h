// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/entryfilter.h"
#include "platform/logstore/knowncatalog.h"
#include "platform/logstore/trace/firehose.h"

#include <memory>

namespace logstore {

class StringFiles;

/// Selects the records a stream visits: those from a time on whose process and subsystem the filter
/// does not rule out.
class RecordSelection
{
public:
    RecordSelection(std::int64_t from,
                    const EntryFilter* filter,
                    StringFiles& strings,
                    TextPool& texts)
        : m_from(from)
        , m_filter(filter)
        , m_strings(strings)
        , m_texts(texts)
    {
    }

    bool reaches(std::int64_t time) const { return time >= m_from; }
    bool hasFilter() const { return m_filter != nullptr; }

    /// False when no record of the process can match.
    bool mayMatch(KnownProcess* process) const;

    /// False when no record of the process in a firehose chunk can match: none with one of its
    /// subsystems, and none without.
    bool mayMatchFirehose(const KnownCatalog* catalog, KnownProcess* process) const;

    /// False when the record cannot match.
    bool mayMatch(const KnownCatalog* catalog,
                  KnownProcess* process,
                  const RecordHead& head,
                  Bytes data) const;

private:
    bool possible(KnownProcess& process, KnownSubsystem& known) const;

    std::int64_t m_from;
    const EntryFilter* m_filter;
    StringFiles& m_strings;
    TextPool& m_texts;
};

} // namespace logstore
