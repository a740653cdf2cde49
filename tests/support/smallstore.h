// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/writer/storefiles.h"
#include "platform/logstore/writer/tracelayout.h"

#include <QString>

#include <string_view>

/// A log archive that a test makes entry by entry, in the order of their times: one boot, one
/// process (quillond, 311) with one subsystem (org.tessel.quillon, sync). Times count nanoseconds
/// since 1970.
class SmallStore
{
public:
    explicit SmallStore(std::int64_t bootTime);

    void log(std::int64_t time,
             std::string_view message,
             std::uint8_t type = 0,
             std::uint64_t activity = 0);
    void signpost(std::int64_t time, std::string_view name, std::uint64_t identifier = 7);
    void activity(std::int64_t time,
                  std::string_view name,
                  std::uint64_t identifier,
                  std::uint64_t parent = 0);
    /// Messages that were lost: an entry of none of the other kinds.
    void loss(std::int64_t time, std::uint64_t count);

    /// Writes the archive into the folder; nothing can be added after that.
    bool write(const QString& folder);

private:
    logstore::writer::Record
    record(logstore::writer::RecordKind kind, std::int64_t time, std::string_view format);
    void add(logstore::writer::Record record) { m_layout.add(m_process, std::move(record)); }

    std::int64_t m_bootTime;
    logstore::writer::UuidText m_strings;
    logstore::writer::Process m_process;
    logstore::writer::TraceLayout m_layout;
};
