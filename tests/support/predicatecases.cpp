// SPDX-License-Identifier: MIT
#include "support/predicatecases.h"

#include "platform/predicate/binding/symbolicvalues.h"
#include "platform/predicate/matching/fieldtable.h"
#include "platform/predicate/predicate.h"
#include "platform/predicate/text/datetext.h"
#include "support/madeupentry.h"

#include <boost/json.hpp>
#include <fstream>

using namespace predicate;

namespace {

namespace json = boost::json;

std::string textOf(const json::value& value)
{
    return std::string(value.as_string());
}

/// Empty when there is no such member.
std::string memberText(const json::object& object, const char* name)
{
    const json::value* value = object.if_contains(name);
    return value == nullptr ? std::string() : textOf(*value);
}

std::int64_t dateOf(const json::value& value)
{
    return readDate(textOf(value), {}).value_or(0);
}

Constant argumentOf(const json::value& value)
{
    switch (value.kind()) {
    case json::kind::bool_: return {value.get_bool()};
    case json::kind::int64: return {value.get_int64()};
    case json::kind::uint64: return {value.get_uint64()};
    case json::kind::double_: return {value.get_double()};
    case json::kind::string: return {textOf(value)};
    case json::kind::null: return {Nil{}};
    case json::kind::object:
        if (value.get_object().contains("real")) // JSON has no NaN
            return {std::stod(textOf(value.at("real")))};
        return {Date{dateOf(value.at("date"))}};
    case json::kind::array: break;
    }
    Constant::List list;
    for (const json::value& element : value.get_array())
        list.push_back(argumentOf(element));
    return {std::move(list)};
}

Value uuidOf(const std::string& text)
{
    Value::UuidBytes bytes{};
    std::string digits;
    std::remove_copy(text.begin(), text.end(), std::back_inserter(digits), '-');
    for (std::size_t i = 0; i < bytes.size() && digits.size() == 2 * bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(std::stoul(digits.substr(2 * i, 2), nullptr, 16));
    return Value::uuid(bytes);
}

Value fieldValueOf(Types types, const json::value& value)
{
    if (!value.is_string())
        return value.is_uint64() ? Value::unsignedInteger(value.get_uint64())
                                 : Value::integer(value.as_int64());
    if (types == type::text)
        return Value::text(value.get_string());
    if (types == type::uuid)
        return uuidOf(textOf(value));
    if (types == type::date)
        return Value::date(dateOf(value));
    if ((types & type::symbolic) != 0)
        return symbolicValue(types, value.get_string()).value_or(Value());
    return Value::unsignedInteger(std::stoull(textOf(value))); // beyond what a double can hold
}

struct KindRow
{
    std::string_view name;
    EntryKind kind;
    std::optional<int> eventType;
};

constexpr KindRow kinds[] = {
    {"log", EntryKind::Log, eventtype::log},
    {"activity", EntryKind::Activity, eventtype::activityCreate},
    {"boundary", EntryKind::Boundary, {}},
    {"signpost", EntryKind::Signpost, eventtype::signpost},
    {"other", EntryKind::Other, {}},
};

Field fieldOf(std::string_view name)
{
    const auto field = fieldNamed(name);
    return field ? *field : throw std::invalid_argument("no field " + std::string(name));
}

MadeUpEntry entryOf(const json::object& members)
{
    const std::string kind = members.contains("kind") ? textOf(members.at("kind")) : "log";
    const auto* row = std::find_if(std::begin(kinds), std::end(kinds),
                                   [&](const KindRow& known) { return known.name == kind; });
    MadeUpEntry entry(row == std::end(kinds) ? throw std::invalid_argument("kind") : row->kind);
    if (row->eventType)
        entry.set(Field::Type, Value::integer(*row->eventType));
    for (const auto& [name, value] : members) {
        if (name != "kind")
            entry.set(fieldOf(name), fieldValueOf(fieldInfo(fieldOf(name)).types, value));
    }
    return entry;
}

Fields fieldsOf(const json::value& names)
{
    Fields fields;
    for (const json::value& name : names.as_array())
        fields.set(static_cast<std::size_t>(fieldOf(name.as_string())));
    return fields;
}

std::string described(const PredicateError& error)
{
    return std::string(error.stage == Stage::Parse ? "parse" : "bind") + " error at "
           + std::to_string(error.position) + ": " + error.sentence;
}

std::string unlessEqual(const std::string& found, const std::string& wanted)
{
    return found == wanted ? std::string() : found;
}

/// One file's cases, tried one after the other. Each test returns what came instead of what had to,
/// or an empty text.
class Cases
{
public:
    std::string tryLine(const json::object& line);

private:
    const json::value* member(const char* name) const { return m_case->if_contains(name); }
    BuildSettings settings() const;
    const json::object& entryMembers() const;
    std::string tryError(const PredicateError& error) const;
    std::string tryAlert() const;
    std::string trySame(const Tree& tree) const;
    std::string tryBuilt(const Predicate& built) const;
    std::string tryPredicate() const;
    std::string tryOrder() const;

    const json::object* m_case = nullptr;
    std::map<std::string, json::object> m_entries;
};

BuildSettings Cases::settings() const
{
    BuildSettings settings;
    if (const json::value* now = member("now"))
        settings.now = dateOf(*now);
    if (const json::value* offset = member("utcOffset"))
        settings.utcOffset = [seconds = offset->as_int64()](std::int64_t) { return seconds; };
    return settings;
}

const json::object& Cases::entryMembers() const
{
    static const json::object none;
    const json::value* entry = member("entry");
    if (entry == nullptr)
        return none;
    return entry->is_object() ? entry->get_object() : m_entries.at(textOf(*entry));
}

std::string Cases::tryError(const PredicateError& error) const
{
    const json::value* stage = member("stage");
    const json::value* position = member("position");
    const json::value* sentence = member("error");
    const json::value* binds = member("binds");
    const bool expected =
        (stage != nullptr && textOf(*stage) == (error.stage == Stage::Parse ? "parse" : "bind"))
        || (binds != nullptr && !binds->as_bool() && error.stage == Stage::Bind);
    const bool placed = position == nullptr || position->to_number<std::size_t>() == error.position;
    const bool said = sentence == nullptr || textOf(*sentence) == error.sentence;
    return expected && placed && said ? std::string() : described(error);
}

std::string Cases::tryAlert() const
{
    const PredicateError error{Stage::Parse, member("position")->to_number<std::size_t>(), "Why."};
    return unlessEqual(alertText(error, textOf(*member("predicate"))), textOf(*member("alert")));
}

std::string Cases::trySame(const Tree& tree) const
{
    const auto same = parse(textOf(*member("same")));
    return same && *same == tree ? std::string() : "the trees differ";
}

std::string Cases::tryBuilt(const Predicate& built) const
{
    const MadeUpEntry entry = entryOf(entryMembers());
    const auto name = [](bool value) { return std::string(value ? "true" : "false"); };
    if (const json::value* possible = member("possible")) {
        const PartOfEntry part(entry, fieldsOf(*member("known")));
        return unlessEqual(name(Matcher(built).possible(part)), name(possible->as_bool()));
    }
    if (const json::value* names = member("looksAt")) {
        const Fields wanted = fieldsOf(*names);
        for (std::size_t i = 0; i < fieldCount; ++i) {
            if (built.looksAt(static_cast<Field>(i)) != wanted[i])
                return "the fields are others";
        }
    }
    if (const json::value* binds = member("binds"))
        return binds->as_bool() ? std::string() : "it binds";
    const json::value* expected = member("expect");
    if (expected == nullptr)
        return member("stage") == nullptr ? std::string() : "it builds";
    const std::string wanted = expected->is_bool() ? name(expected->get_bool()) : "error";
    return unlessEqual(name(Matcher(built).matches(entry)), wanted);
}

std::string Cases::tryPredicate() const
{
    const json::value* args = member("args");
    const Constant arguments = args == nullptr ? Constant{Constant::List{}} : argumentOf(*args);
    const auto tree =
        parse(textOf(*member("predicate")), std::get<Constant::List>(arguments.value));
    if (!tree)
        return tryError(tree.error());
    if (member("same") != nullptr)
        return trySame(*tree);
    const auto built = bind(*tree, settings());
    return built ? tryBuilt(*built) : tryError(built.error());
}

/// Every two constants, by every operator that orders.
std::string Cases::tryOrder() const
{
    const json::array& constants = member("ascending")->as_array();
    for (std::size_t i = 0; i < constants.size(); ++i) {
        for (std::size_t j = i; j < constants.size(); ++j) {
            const std::string a = textOf(constants[i]);
            const std::string b = textOf(constants[j]);
            const std::string text =
                a + " <= " + b + " AND " + b + " >= " + a + " AND NOT " + a + " > " + b
                + " AND NOT " + b + " < " + a + " AND " + a + " BETWEEN {" + a + ", " + b + "} AND "
                + (i == j ? a + " == " + b
                          : a + " < " + b + " AND " + b + " > " + a + " AND " + a + " != " + b
                                + " AND NOT " + b + " <= " + a + " AND NOT " + a + " >= " + b);
            const auto built = build(text, {}, settings());
            if (!built || !Matcher(*built).matches(MadeUpEntry()))
                return text;
        }
    }
    return {};
}

std::string Cases::tryLine(const json::object& line)
{
    m_case = &line;
    if (const json::value* name = member("define")) {
        m_entries[textOf(*name)] = line.at("entry").as_object();
        return {};
    }
    if (member("ascending") != nullptr)
        return tryOrder();
    return member("alert") == nullptr ? tryPredicate() : tryAlert();
}

} // namespace

Result<CaseOutcomes> tryPredicateCases(const std::filesystem::path& file)
{
    std::ifstream in(file);
    if (!in)
        return failure(file.string() + " can't be read.");
    CaseOutcomes outcomes;
    Cases cases;
    std::string line;
    while (std::getline(in, line)) {
        ++outcomes.cases;
        CaseFailure failure;
        try {
            const json::object object = json::parse(line).as_object();
            failure.name = memberText(object, object.contains("id") ? "id" : "name");
            failure.predicate = memberText(object, "predicate");
            failure.instead = cases.tryLine(object);
        } catch (const std::exception& error) {
            failure.instead = error.what();
        }
        if (!failure.instead.empty())
            outcomes.failures.push_back(std::move(failure));
    }
    return outcomes;
}
