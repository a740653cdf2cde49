// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/fieldtable.h"

#include "platform/predicate/text/sentences.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace predicate {

namespace {

constexpr std::uint8_t bit(EntryKind kind)
{
    return static_cast<std::uint8_t>(kind);
}

constexpr std::uint8_t log = bit(EntryKind::Log);
constexpr std::uint8_t activity = bit(EntryKind::Activity);
constexpr std::uint8_t boundary = bit(EntryKind::Boundary);
constexpr std::uint8_t signpost = bit(EntryKind::Signpost);
constexpr std::uint8_t ofProcess = log | activity | signpost;
constexpr std::uint8_t all = ofProcess | boundary;

// The cost of a value depends on where it is read from.
constexpr int fromHead = 1;         // the head of the record
constexpr int fromCatalog = 2;      // the process
constexpr int fromStrings = 20;     // the string files
constexpr int fromEverything = 200; // the format string and all arguments

struct Row
{
    Field field;
    std::string_view name;
    std::array<std::string_view, 2> synonyms;
    FieldInfo info;
};

constexpr std::array<Row, fieldCount> rows = {{
    {Field::ComposedMessage,
     "composedMessage",
     {"eventMessage", "message"},
     {type::text, all, fromEverything}},
    {Field::Date, "date", {"timestamp"}, {type::date, all, fromHead}},
    {Field::Process, "process", {}, {type::text, ofProcess, fromCatalog}},
    {Field::ProcessIdentifier,
     "processIdentifier",
     {"processID", "pid"},
     {type::integer, ofProcess, fromCatalog}},
    {Field::ProcessImagePath, "processImagePath", {}, {type::text, ofProcess, fromCatalog}},
    {Field::ProcessImageUuid, "processImageUUID", {}, {type::uuid, ofProcess, fromCatalog}},
    {Field::Sender, "sender", {"library"}, {type::text, ofProcess, fromStrings}},
    {Field::SenderImagePath, "senderImagePath", {}, {type::text, ofProcess, fromStrings}},
    {Field::SenderImageUuid, "senderImageUUID", {}, {type::uuid, ofProcess, fromStrings}},
    {Field::SenderImageOffset,
     "senderImageOffset",
     {"senderProgramCounter"},
     {type::integer, ofProcess, fromStrings}},
    {Field::Subsystem, "subsystem", {}, {type::text, log | signpost, fromCatalog}},
    {Field::Category, "category", {}, {type::text, log | signpost, fromCatalog}},
    {Field::LogType, "logType", {"messageType"}, {type::logType, log, fromHead}},
    {Field::Level, "level", {}, {type::level, log, fromHead}},
    {Field::Type, "type", {"eventType"}, {type::eventType, all, fromHead}},
    {Field::ActivityIdentifier,
     "activityIdentifier",
     {"activityID"},
     {type::integer, ofProcess, fromHead}},
    {Field::ParentActivityIdentifier,
     "parentActivityIdentifier",
     {"parentActivityID"},
     {type::integer, ofProcess, fromHead}},
    {Field::CreatorActivityIdentifier,
     "creatorActivityIdentifier",
     {"creatorActivityID"},
     {type::integer, activity, fromHead}},
    {Field::TransitionActivityIdentifier,
     "transitionActivityIdentifier",
     {},
     {type::integer, activity, fromHead}},
    {Field::CreatorProcessUniqueIdentifier,
     "creatorProcessUniqueIdentifier",
     {},
     {type::integer, activity, fromHead}},
    {Field::ThreadIdentifier,
     "threadIdentifier",
     {"threadID", "tid"},
     {type::integer, ofProcess, fromHead}},
    {Field::UserIdentifier,
     "userIdentifier",
     {"userID", "uid"},
     {type::integer, ofProcess, fromCatalog}},
    {Field::TraceIdentifier, "traceIdentifier", {"traceID"}, {type::integer, ofProcess, fromHead}},
    {Field::MachContinuousTimestamp,
     "machContinuousTimestamp",
     {"machTimestamp"},
     {type::integer, all, fromHead}},
    {Field::ContinuousNanosecondsSinceBoot,
     "continuousNanosecondsSinceBoot",
     {},
     {type::integer, all, fromHead}},
    {Field::BootUuid, "bootUUID", {}, {type::uuid, all, fromHead}},
    {Field::TimeToLive, "timeToLive", {"ttl"}, {type::integer, log, fromHead}},
    {Field::FormatString, "formatString", {"format"}, {type::text, log | signpost, fromStrings}},
    {Field::Size, "size", {}, {type::integer, all, fromHead}},
    {Field::StoreCategory, "storeCategory", {}, {type::integer, all, fromHead}},
    {Field::SignpostIdentifier,
     "signpostIdentifier",
     {"signpostID"},
     {type::integer, signpost, fromHead}},
    {Field::SignpostName, "signpostName", {}, {type::text, signpost, fromStrings}},
    {Field::SignpostType, "signpostType", {}, {type::signpostType, signpost, fromHead}},
    {Field::SignpostScope, "signpostScope", {}, {type::signpostScope, signpost, fromHead}},
}};

static_assert(std::is_sorted(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
    return a.field < b.field;
}));

const std::unordered_map<std::string_view, Field>& fieldsByName()
{
    static const auto fields = [] {
        std::unordered_map<std::string_view, Field> out;
        for (const Row& row : rows) {
            out.emplace(row.name, row.field);
            for (const std::string_view synonym : row.synonyms) {
                if (!synonym.empty())
                    out.emplace(synonym, row.field);
            }
        }
        return out;
    }();
    return fields;
}

/// The field that a letter stands for in the shorthand of the command-line tool.
std::string_view shorthand(std::string_view name)
{
    static const std::unordered_map<std::string_view, std::string_view> letters = {
        {"p", "process"},  {"s", "subsystem"},      {"c", "category"},    {"m", "eventMessage"},
        {"l", "sender"},   {"f", "formatString"},   {"t", "messageType"}, {"cat", "category"},
        {"lib", "sender"}, {"msg", "eventMessage"}, {"sub", "subsystem"}, {"proc", "process"},
    };
    const auto found = letters.find(name);
    return found == letters.end() ? std::string_view() : found->second;
}

} // namespace

const FieldInfo& fieldInfo(Field field)
{
    return rows[static_cast<std::size_t>(field)].info;
}

std::optional<Field> fieldNamed(std::string_view name)
{
    const auto found = fieldsByName().find(name);
    return found == fieldsByName().end() ? std::nullopt : std::optional(found->second);
}

const std::vector<std::string_view>& fieldNames()
{
    static const auto names = [] {
        std::vector<std::string_view> out;
        for (const Row& row : rows) {
            out.push_back(row.name);
            std::copy_if(row.synonyms.begin(), row.synonyms.end(), std::back_inserter(out),
                         [](std::string_view synonym) { return !synonym.empty(); });
        }
        return out;
    }();
    return names;
}

std::string_view suggestedField(std::string_view name)
{
    const std::string_view full = shorthand(name);
    return full.empty() ? nearest(name, fieldNames()) : full;
}

} // namespace predicate
