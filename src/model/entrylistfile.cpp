// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"

#include "model/decimal.h"
#include "model/entrylistbuilder.h"
#include "platform/filereplacement.h"
#include "platform/logstore/uuid.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/serializer.hpp>
#include <vector>

namespace {

namespace json = boost::json;

constexpr std::size_t bufferSize = 1 << 18;

std::string_view view(json::string_view text)
{
    return {text.data(), text.size()};
}

/// Hands the parser's events to the builder. Texts come in parts where an escape or the end of a
/// buffer stands in them.
class ParserEvents
{
public:
    // NOLINTBEGIN(readability-identifier-naming): the names are the parser's
    static constexpr std::size_t max_object_size = std::size_t(-1);
    static constexpr std::size_t max_array_size = std::size_t(-1);
    static constexpr std::size_t max_key_size = std::size_t(-1);
    static constexpr std::size_t max_string_size = std::size_t(-1);

    using Error = json::error_code;

    bool on_document_begin(Error&) { return true; }
    bool on_document_end(Error&) { return true; }
    bool on_array_begin(Error& error) { return check(m_builder.beginArray(), error); }
    bool on_array_end(std::size_t, Error& error) { return check(m_builder.end(), error); }
    bool on_object_begin(Error& error) { return check(m_builder.beginObject(), error); }
    bool on_object_end(std::size_t, Error& error) { return check(m_builder.end(), error); }

    bool on_key_part(json::string_view part, std::size_t, Error&)
    {
        m_parts += view(part);
        return true;
    }
    bool on_key(json::string_view last, std::size_t, Error& error)
    {
        return take(last, &EntryListBuilder::key, error);
    }
    bool on_string_part(json::string_view part, std::size_t, Error&)
    {
        if (m_builder.wantsString())
            m_parts += view(part);
        return true;
    }
    bool on_string(json::string_view last, std::size_t, Error& error)
    {
        return take(last, &EntryListBuilder::string, error);
    }

    bool on_number_part(json::string_view, Error&) { return true; }
    bool on_int64(std::int64_t value, json::string_view, Error& error)
    {
        return check(m_builder.integer(value), error);
    }
    bool on_uint64(std::uint64_t value, json::string_view, Error& error)
    {
        return check(m_builder.number(static_cast<double>(value)), error);
    }
    bool on_double(double value, json::string_view, Error& error)
    {
        return check(m_builder.number(value), error);
    }
    bool on_bool(bool, Error& error) { return check(m_builder.boolean(), error); }
    bool on_null(Error& error) { return check(m_builder.null(), error); }

    bool on_comment_part(json::string_view, Error&) { return true; }
    bool on_comment(json::string_view, Error&) { return true; }
    // NOLINTEND(readability-identifier-naming)

    EntryListBuilder& builder() { return m_builder; }

private:
    bool
    take(json::string_view last, bool (EntryListBuilder::*event)(std::string_view), Error& error)
    {
        if (m_parts.empty())
            return check((m_builder.*event)(view(last)), error);
        m_parts += view(last);
        const bool isTaken = (m_builder.*event)(m_parts);
        m_parts.clear();
        return check(isTaken, error);
    }

    /// Any error code stops the parser; the builder knows the reason.
    static bool check(bool isTaken, Error& error)
    {
        if (!isTaken)
            error = json::error::syntax;
        return isTaken;
    }

    EntryListBuilder m_builder;
    std::string m_parts;
};

/// Writes JSON, a buffer at a time.
class EntryListWriter
{
public:
    explicit EntryListWriter(QIODevice& to) : m_to(to), m_buffer(bufferSize) {}

    void write(const QList<LogEntry>& entries)
    {
        std::string_view separator = "[";
        for (const LogEntry& entry : entries) {
            put(separator);
            writeEntry(entry);
            separator = ",";
            if (!m_isOk)
                return;
        }
        put(entries.isEmpty() ? "[]\n" : "]\n");
        flush();
    }

    bool isOk() const { return m_isOk; }

private:
    void writeEntry(const LogEntry& entry)
    {
        logstore::Uuid id;
        const QByteArray idBytes = entry.id.toRfc4122();
        std::copy(idBytes.begin(), idBytes.end(), reinterpret_cast<char*>(id.bytes.data()));
        putName('{', idMember);
        putString(id.text());

        putName(',', typeMember);
        put(Decimal(entry.type).view());

        for (std::size_t i = typeMember + 1; i < userNoteMember; ++i) {
            putName(',', i);
            putString((entry.*entryMembers[i].text).utf8());
        }
        if (entry.userNote) {
            putName(',', userNoteMember);
            putString(entry.userNote->utf8());
        }
        put("}");
    }

    void putName(char before, std::size_t member)
    {
        put({&before, 1});
        put("\"");
        put(entryMembers[member].name);
        put("\":");
    }

    void put(std::string_view bytes)
    {
        Q_ASSERT(bytes.size() <= m_buffer.size());
        if (m_buffer.size() - m_size < bytes.size())
            flush();
        m_size += bytes.copy(m_buffer.data() + m_size, bytes.size());
    }

    void putString(std::string_view text)
    {
        m_escaping.reset(text.empty() ? json::string_view("")
                                      : json::string_view(text.data(), text.size()));
        while (!m_escaping.done()) {
            if (m_size == m_buffer.size())
                flush();
            m_size += m_escaping.read(m_buffer.data() + m_size, m_buffer.size() - m_size).size();
        }
    }

    void flush()
    {
        const auto size = static_cast<qint64>(m_size);
        m_isOk = m_isOk && m_to.write(m_buffer.data(), size) == size;
        m_size = 0;
    }

    QIODevice& m_to;
    std::vector<char> m_buffer;
    std::size_t m_size = 0;
    json::serializer m_escaping;
    bool m_isOk = true;
};

/// Returns the number of bytes skipped.
std::size_t skipByteOrderMark(QIODevice& from)
{
    const QByteArray mark("\xEF\xBB\xBF");
    return from.peek(mark.size()) == mark ? static_cast<std::size_t>(from.skip(mark.size())) : 0;
}

} // namespace

bool writeEntryList(const QList<LogEntry>& entries, QIODevice& to)
{
    EntryListWriter writer(to);
    writer.write(entries);
    return writer.isOk();
}

Result<QList<LogEntry>> readEntryList(QIODevice& from)
{
    json::parse_options options;
    options.max_depth = 1000; // the builder's own limit is lower, and knows the entry
    json::basic_parser<ParserEvents> parser(options);
    EntryListBuilder& builder = parser.handler().builder();
    std::vector<char> buffer(bufferSize);
    std::size_t position = skipByteOrderMark(from);
    for (bool isAtEnd = false; !isAtEnd;) {
        const qint64 read = from.read(buffer.data(), static_cast<qint64>(buffer.size()));
        if (read < 0)
            return failure(from.errorString().toStdString() + '.');
        isAtEnd = read == 0;
        json::error_code error;
        const auto size = static_cast<std::size_t>(read);
        const std::size_t used = parser.write_some(!isAtEnd, buffer.data(), size, error);
        position += used;
        if (!builder.error().empty())
            return failure(builder.error());
        if (!error && used < size)
            error = json::error::extra_data;
        if (error)
            return failure(QCoreApplication::translate("Failures", "It is not JSON: %1 at byte %2.")
                               .arg(QString::fromStdString(error.message()))
                               .arg(position)
                               .toStdString());
    }
    return builder.takeEntries();
}

Result<void> saveEntryList(const QList<LogEntry>& entries, const QString& path)
{
    return replaceFile(QFile::encodeName(path).toStdString(),
                       [&](QIODevice& file) { return writeEntryList(entries, file); });
}

Result<QList<LogEntry>> loadEntryList(const QString& path)
{
    const auto failed = [&path](const std::string& reason) {
        const QString text =
            QCoreApplication::translate("Failures", "The entry list “%1” could not be read. %2");
        return failure(
            text.arg(QDir::toNativeSeparators(path), QString::fromStdString(reason)).toStdString());
    };
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return failed(QCoreApplication::translate("Failures", "It is not a file.").toStdString());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failed(file.errorString().toStdString() + '.');
    auto entries = readEntryList(file);
    if (!entries)
        return failed(entries.error().description);
    return entries;
}
