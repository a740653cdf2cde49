// SPDX-License-Identifier: MIT
#pragma once

#include "model/logentry.h"
#include "model/textcache.h"

#include <QList>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// A member of an entry in an entry list file.
struct EntryMember
{
    std::string_view name;
    Text LogEntry::*text = nullptr; ///< null for the three that are no plain text
    bool isShared = false;          ///< its texts repeat from entry to entry
};

/// All members, in the order in which they are written.
extern const std::array<EntryMember, 18> entryMembers;

inline constexpr std::size_t idMember = 0;
inline constexpr std::size_t typeMember = 1;
inline constexpr std::size_t userNoteMember = 17; ///< the only one that may be missing

/// Makes entries from the events of a JSON parser, and is strict about them. An event that does not
/// fit returns false; error() then says what is wrong with which entry and member.
class EntryListBuilder
{
public:
    bool beginArray();
    bool beginObject();
    bool end(); ///< of an array or object
    bool key(std::string_view name);
    bool string(std::string_view value);
    bool integer(qint64 value);
    /// A number written with a fraction, with an exponent, or beyond 64 bits.
    bool number(double value);
    bool boolean();
    bool null();

    /// False where a string would be thrown away, and need not be put together.
    bool wantsString() const { return !isIgnoring(); }

    const std::string& error() const { return m_error; }
    QList<LogEntry> takeEntries() { return std::move(m_entries); }

private:
    static constexpr int outside = 0;
    static constexpr int inList = 1;
    static constexpr int inEntry = 2; ///< and deeper in members that are passed over
    static constexpr int deepest = 500;
    static constexpr std::size_t ignored = std::size_t(-1);

    bool isIgnoring() const
    {
        return m_depth > inEntry || (m_depth == inEntry && m_member == ignored);
    }
    /// Of the entry that the error is about, or the last one begun; from 1.
    qsizetype entryNumber() const { return m_entries.size(); }
    bool descend();
    bool takeId(std::string_view value);
    bool takeText(std::string_view value);
    bool endEntry();
    /// Fails because the value is not what stands here in an entry list.
    bool misfit();
    bool failEntry(const char* sentence);
    bool failMember(std::size_t member, const char* sentence);

    QList<LogEntry> m_entries;
    TextsByContent m_shared;
    std::string m_error;
    int m_depth = outside;
    std::size_t m_member = ignored; ///< whose value comes next, in an entry
    std::size_t m_likelyMember = 0; ///< members mostly come in the order in which we write them
    std::uint32_t m_met = 0;        ///< a bit for each member
};
