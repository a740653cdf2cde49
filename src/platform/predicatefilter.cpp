// SPDX-License-Identifier: MIT
#include "platform/predicatefilter.h"

#include "platform/logstore/entry.h"
#include "platform/predicate/binding/symbolicvalues.h"

namespace {

using predicate::Field;
using predicate::Value;

predicate::EntryKind kindOf(logstore::EntryKind kind)
{
    switch (kind) {
    case logstore::EntryKind::Log: return predicate::EntryKind::Log;
    case logstore::EntryKind::Activity: return predicate::EntryKind::Activity;
    case logstore::EntryKind::Boundary: return predicate::EntryKind::Boundary;
    case logstore::EntryKind::Signpost: return predicate::EntryKind::Signpost;
    default: return predicate::EntryKind::Other;
    }
}

int logTypeOf(logstore::Level level)
{
    switch (level) {
    case logstore::Level::Debug: return 2;
    case logstore::Level::Info: return 1;
    case logstore::Level::Error: return 16;
    case logstore::Level::Fault: return 17;
    default: return 0;
    }
}

Value eventTypeOf(const logstore::Entry& entry)
{
    using logstore::EventType;
    namespace eventtype = predicate::eventtype;
    switch (entry.event()) {
    case EventType::Log:
    case EventType::SimpleDump: return Value::integer(eventtype::log);
    case EventType::Trace: return Value::integer(eventtype::trace);
    case EventType::ActivityCreate: return Value::integer(eventtype::activityCreate);
    case EventType::UserAction: return Value::integer(eventtype::userAction);
    case EventType::Signpost: return Value::integer(eventtype::signpost);
    case EventType::Loss: return Value::integer(eventtype::loss);
    case EventType::StateDump: return Value::symbol(eventtype::state);
    case EventType::TimeSync: break;
    }
    // The first boundary of a boot has continuous time 0, and is not a clock correction.
    return entry.continuousTime() == 0 ? Value() : Value::symbol(eventtype::timesync);
}

template <typename Number>
Value number(Number value)
{
    return Value::unsignedInteger(static_cast<std::uint64_t>(value));
}

Value ofKind(const logstore::Entry& entry, logstore::EntryKind kind, const Value& value)
{
    return entry.kind() == kind ? value : Value();
}

/// Nil when the catalog does not name the process of the record.
Value ofProcess(const logstore::Entry& entry, std::int64_t value)
{
    return entry.hasProcess() ? Value::integer(value) : Value();
}

Value senderOffset(const logstore::Entry& entry)
{
    const auto offset = entry.senderImageOffset();
    return offset ? number(*offset) : Value();
}

class StoreEntryFields : public predicate::EntryFields
{
public:
    explicit StoreEntryFields(const logstore::Entry& entry) : m_entry(entry) {}

    std::optional<predicate::EntryKind> kind() const override { return kindOf(m_entry.kind()); }
    Value field(Field field) const override;

private:
    const logstore::Entry& m_entry;
};

Value StoreEntryFields::field(Field field) const
{
    using logstore::EntryKind;
    const logstore::Entry& entry = m_entry;
    switch (field) {
    case Field::ComposedMessage: return Value::text(entry.composedMessage());
    case Field::Date: return Value::date(entry.time());
    case Field::Process: return Value::text(entry.process());
    case Field::ProcessIdentifier: return ofProcess(entry, entry.processIdentifier());
    case Field::ProcessImagePath: return Value::text(entry.processImagePath());
    case Field::ProcessImageUuid: return Value::uuid(entry.processImageUuid().bytes);
    case Field::Sender: return Value::text(entry.sender());
    case Field::SenderImagePath: return Value::text(entry.senderImagePath());
    case Field::SenderImageUuid: return Value::uuid(entry.senderImageUuid().bytes);
    case Field::SenderImageOffset: return senderOffset(entry);
    case Field::Subsystem: return Value::text(entry.subsystem());
    case Field::Category: return Value::text(entry.category());
    case Field::LogType: return ofKind(entry, EntryKind::Log, number(logTypeOf(entry.level())));
    case Field::Level: return ofKind(entry, EntryKind::Log, number(entry.level()));
    case Field::Type: return eventTypeOf(entry);
    case Field::ActivityIdentifier: return number(entry.activityIdentifier());
    case Field::ParentActivityIdentifier: return number(entry.parentActivityIdentifier());
    case Field::CreatorActivityIdentifier:
        return ofKind(entry, EntryKind::Activity, number(entry.creatorActivityIdentifier()));
    case Field::CreatorProcessUniqueIdentifier:
        return ofKind(entry, EntryKind::Activity, number(entry.creatorProcessUniqueIdentifier()));
    case Field::TransitionActivityIdentifier: return {}; // not in any record
    case Field::ThreadIdentifier: return number(entry.threadIdentifier());
    case Field::UserIdentifier: return ofProcess(entry, entry.userIdentifier());
    case Field::TraceIdentifier: return number(entry.traceIdentifier());
    case Field::MachContinuousTimestamp: return number(entry.continuousTime());
    case Field::ContinuousNanosecondsSinceBoot: return number(entry.nanosecondsSinceBoot());
    case Field::BootUuid: return Value::uuid(entry.bootUuid().bytes);
    case Field::TimeToLive: return number(entry.timeToLive());
    case Field::FormatString: return Value::text(entry.formatString());
    case Field::Size:
        return entry.kind() == EntryKind::Boundary ? Value() : number(entry.recordSize());
    case Field::StoreCategory: return number(entry.storeCategory());
    case Field::SignpostIdentifier:
        return ofKind(entry, EntryKind::Signpost, number(entry.signpostIdentifier()));
    case Field::SignpostName: return Value::text(entry.signpostName());
    case Field::SignpostType:
        return ofKind(entry, EntryKind::Signpost, number(entry.signpostType()));
    case Field::SignpostScope:
        return ofKind(entry, EntryKind::Signpost, number(entry.signpostScope()));
    }
    return {};
}

/// The fields that all records of a process share, or all with one subsystem and category.
class CatalogFields : public predicate::EntryFields
{
public:
    explicit CatalogFields(const logstore::ProcessFacts& process) : m_process(process) {}
    CatalogFields(const logstore::ProcessFacts& process,
                  std::string_view subsystem,
                  std::string_view category)
        : m_process(process)
        , m_subsystem(Value::text(subsystem))
        , m_category(Value::text(category))
    {
    }

    std::optional<predicate::EntryKind> kind() const override { return std::nullopt; }
    Value field(Field field) const override
    {
        switch (field) {
        case Field::Process: return Value::text(m_process.process);
        case Field::ProcessImagePath: return Value::text(m_process.processImagePath);
        case Field::ProcessImageUuid: return Value::uuid(m_process.processImageUuid.bytes);
        case Field::ProcessIdentifier: return Value::integer(m_process.processIdentifier);
        case Field::UserIdentifier: return Value::integer(m_process.userIdentifier);
        case Field::Subsystem: return m_subsystem;
        case Field::Category: return m_category;
        default: return Value::unknown();
        }
    }

private:
    const logstore::ProcessFacts& m_process;
    Value m_subsystem = Value::unknown();
    Value m_category = Value::unknown();
};

} // namespace

bool PredicateFilter::matches(const logstore::Entry& entry) const
{
    return m_matcher.matches(StoreEntryFields(entry));
}

bool PredicateFilter::mayMatch(const logstore::ProcessFacts& process) const
{
    return m_matcher.possible(CatalogFields(process));
}

bool PredicateFilter::mayMatch(const logstore::ProcessFacts& process,
                               std::string_view subsystem,
                               std::string_view category) const
{
    return m_matcher.possible(CatalogFields(process, subsystem, category));
}
