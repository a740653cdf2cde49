// SPDX-License-Identifier: MIT
#include "support/predicatecases.h"

#include "platform/predicate/binding/symbolicvalues.h"
#include "platform/predicate/matching/fieldtable.h"
#include "platform/predicate/predicate.h"
#include "platform/predicate/text/datetext.h"

#include <fstream>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

using namespace predicate;

void MadeUpEntry::set(Field field, const Value& value)
{
    m_values[field] = value.isText() ? Value::text(m_texts.emplace_back(value.asText())) : value;
}

Value MadeUpEntry::field(Field field) const
{
    const auto found = m_values.find(field);
    return found == m_values.end() ? Value() : found->second;
}

namespace {

using Json = rapidjson::Value;

std::string textOf(const Json& json)
{
    return {json.GetString(), json.GetStringLength()};
}

std::int64_t dateOf(const Json& json)
{
    return readDate(textOf(json), {}).value_or(0);
}

Constant argumentOf(const Json& json)
{
    if (json.IsBool())
        return {json.GetBool()};
    if (json.IsInt64())
        return {json.GetInt64()};
    if (json.IsUint64())
        return {json.GetUint64()};
    if (json.IsDouble())
        return {json.GetDouble()};
    if (json.IsString())
        return {textOf(json)};
    if (json.IsObject())
        return {Date{dateOf(json["date"])}};
    if (!json.IsArray())
        return {Nil{}};
    Constant::List list;
    for (const Json& element : json.GetArray())
        list.push_back(argumentOf(element));
    return {std::move(list)};
}

Value integerOf(const Json& json)
{
    if (json.IsUint64())
        return Value::unsignedInteger(json.GetUint64());
    return json.IsInt64() ? Value::integer(json.GetInt64())
                          : Value::unsignedInteger(std::stoull(textOf(json)));
}

Value fieldValueOf(Types types, const Json& json, const std::string& text)
{
    if ((types & type::anyText) != 0)
        return Value::text(text);
    if (types == type::date)
        return Value::date(dateOf(json));
    if ((types & type::symbolic) != 0 && json.IsString())
        return symbolicValue(types, text).value_or(Value());
    return integerOf(json);
}

EntryKind kindOf(const std::string& name)
{
    if (name == "activity")
        return EntryKind::Activity;
    if (name == "boundary")
        return EntryKind::Boundary;
    return name == "signpost" ? EntryKind::Signpost : EntryKind::Log;
}

void setEventType(MadeUpEntry& entry)
{
    switch (*entry.kind()) {
    case EntryKind::Log: return entry.set(Field::Type, Value::integer(eventtype::log));
    case EntryKind::Activity:
        return entry.set(Field::Type, Value::integer(eventtype::activityCreate));
    case EntryKind::Signpost: return entry.set(Field::Type, Value::integer(eventtype::signpost));
    default: return;
    }
}

Result<MadeUpEntry> entryOf(const Json& json)
{
    MadeUpEntry entry(kindOf(textOf(json["kind"])));
    setEventType(entry);
    for (const auto& member : json.GetObject()) {
        const std::string name = textOf(member.name);
        if (name == "kind")
            continue;
        const auto field = fieldNamed(name);
        if (!field)
            return failure("there is no field " + name);
        const std::string text = member.value.IsString() ? textOf(member.value) : std::string();
        entry.set(*field, fieldValueOf(fieldInfo(*field).types, member.value, text));
    }
    return entry;
}

Result<PredicateCase> caseOf(const Json& json)
{
    PredicateCase out;
    out.id = textOf(json["id"]);
    out.predicate = textOf(json["predicate"]);
    if (json.HasMember("args"))
        out.arguments = std::get<Constant::List>(argumentOf(json["args"]).value);
    if (json.HasMember("now"))
        out.now = dateOf(json["now"]);
    if (json.HasMember("parses")) {
        out.binds = json["binds"].GetBool();
        return out;
    }
    auto entry = entryOf(json["entry"]);
    if (!entry)
        return tl::unexpected(entry.error());
    out.entry = *std::move(entry);
    if (json["expect"].IsBool())
        out.matches = json["expect"].GetBool();
    if (json.HasMember("stage"))
        out.errorStage = textOf(json["stage"]);
    if (json.HasMember("position"))
        out.errorPosition = json["position"].GetUint64();
    return out;
}

std::string described(const PredicateError& error)
{
    return std::string(error.stage == Stage::Parse ? "parse" : "bind") + " error at "
           + std::to_string(error.position) + ": " + error.sentence;
}

std::string errorShortfall(const PredicateCase& wanted, const PredicateError& error)
{
    const bool stageHolds = wanted.errorStage == (error.stage == Stage::Parse ? "parse" : "bind");
    const bool positionHolds = !wanted.errorPosition || *wanted.errorPosition == error.position;
    return stageHolds && positionHolds ? std::string() : described(error);
}

} // namespace

Result<std::vector<PredicateCase>> readPredicateCases(const std::filesystem::path& file)
{
    std::ifstream in(file);
    if (!in)
        return failure(file.string() + " can't be read.");
    std::vector<PredicateCase> cases;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        rapidjson::Document json;
        json.Parse(line.data(), line.size());
        const std::string place = file.string() + ", line " + std::to_string(number) + ": ";
        if (json.HasParseError())
            return failure(place + rapidjson::GetParseError_En(json.GetParseError()));
        auto read = caseOf(json);
        if (!read)
            return failure(place + read.error().description);
        cases.push_back(*std::move(read));
    }
    return cases;
}

std::string shortfall(const PredicateCase& wanted)
{
    const auto tree = parse(wanted.predicate, wanted.arguments);
    if (!tree)
        return errorShortfall(wanted, tree.error());
    const auto built = bind(*tree, {wanted.now, {}});
    if (wanted.binds)
        return built.has_value() == *wanted.binds ? ""
               : built                            ? "it binds"
                                                  : described(built.error());
    if (!built)
        return errorShortfall(wanted, built.error());
    const bool matches = Matcher(*built).matches(wanted.entry);
    return wanted.matches == matches ? "" : matches ? "true" : "false";
}
