// SPDX-License-Identifier: MIT
#pragma once

#include "platform/logstore/store.h"
#include "platform/logstore/writer/storefiles.h"

#include <QString>
#include <QTemporaryDir>

#include <initializer_list>
#include <vector>

/// An entry's fields, kept.
struct Seen
{
    logstore::EntryKind kind{};
    logstore::EventType event{};
    std::int64_t time = 0;
    std::uint64_t continuousTime = 0;
    logstore::Level level{};
    logstore::StoreCategory storeCategory{};
    logstore::SignpostType signpostType{};
    std::int32_t processIdentifier = 0;
    std::uint64_t thread = 0;
    std::uint64_t activity = 0;
    std::uint64_t parentActivity = 0;
    std::uint64_t signpost = 0;
    QString process;
    QString processPath;
    QString sender;
    QString senderPath;
    QString subsystem;
    QString category;
    QString signpostName;
    QString format;
    QString message;
};

/// A store made for one test: a boot, a process with an image and a shared cache, and what the test
/// adds.
class WrittenStore
{
public:
    /// Wall time at boot; a tick is a nanosecond, so a record's time is this and its continuous
    /// time.
    static constexpr std::int64_t bootTime = 1'700'000'000'000'000'000;

    WrittenStore();

    logstore::writer::Boot boot;
    logstore::writer::Process process;
    logstore::writer::UuidText image;
    logstore::writer::SharedCache cache;
    logstore::writer::StoreFiles files; ///< written beside those made of the fields above

    /// A message without arguments.
    logstore::writer::Record message(std::uint64_t time, std::string_view text);
    /// A page of the process.
    logstore::writer::Firehose page(std::vector<logstore::writer::Record> records) const;
    /// A file of the boot with one catalog that knows the process.
    logstore::writer::TraceFile trace(std::vector<logstore::writer::ChunkSet> sets) const;
    /// Adds the chunks as one chunk set of one file in Persist.
    void addChunks(std::vector<logstore::writer::Chunk> chunks);
    void addRecords(std::vector<logstore::writer::Record> records);

    /// Writes the files; the image, cache and boot as far as no file stands in their place.
    std::filesystem::path write();
    std::vector<Seen> all(std::int64_t from = logstore::Store::beginning);
    /// All but boundaries.
    std::vector<Seen> entries(std::int64_t from = logstore::Store::beginning);
    /// The messages of entries(), one to a line.
    QString messages();

private:
    QTemporaryDir m_folder;
};

logstore::Uuid testUuid(std::uint8_t number);

inline QString utf8(const char* text)
{
    return QString::fromUtf8(text);
}
QString lines(std::initializer_list<const char*> texts);

/// The only entry of a store with the record.
Seen only(WrittenStore& store, const logstore::writer::Record& record);

/// The trace file that most tests write to.
constexpr auto persist = "Persist/0000000000000001.tracev3";
constexpr std::uint32_t enormous = 0xffffffff; ///< for sizes that lie

/// Writes an integer over what stands at `offset`.
template <typename T>
logstore::writer::Edit put(std::size_t offset, T value)
{
    return [offset, value](logstore::writer::Bytes& bytes) {
        std::memcpy(&bytes.at(offset), &value, sizeof value);
    };
}
