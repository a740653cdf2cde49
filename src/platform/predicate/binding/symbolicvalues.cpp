// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/symbolicvalues.h"

#include "platform/base/ascii.h"
#include "platform/predicate/text/sentences.h"

#include <algorithm>
#include <array>
#include <vector>

namespace predicate {

namespace {

enum class Standing : bool { Main, Synonym };

struct SymbolRow
{
    Types type;
    std::string_view name;
    int number;
    Standing standing = Standing::Main;
    bool numbered = true;
};

constexpr auto synonym = Standing::Synonym;

constexpr std::array<SymbolRow, 31> symbols = {{
    {type::logType, "default", 0},
    {type::logType, "release", 0, synonym},
    {type::logType, "notice", 0, synonym},
    {type::logType, "info", 1},
    {type::logType, "debug", 2},
    {type::logType, "error", 16},
    {type::logType, "fault", 17},
    {type::level, "undefined", 0},
    {type::level, "debug", 1},
    {type::level, "info", 2},
    {type::level, "notice", 3},
    {type::level, "default", 3, synonym},
    {type::level, "error", 4},
    {type::level, "fault", 5},
    {type::eventType, "activityCreateEvent", eventtype::activityCreate},
    {type::eventType, "activityTransitionEvent", eventtype::activityTransition},
    {type::eventType, "userActionEvent", eventtype::userAction},
    {type::eventType, "traceEvent", eventtype::trace},
    {type::eventType, "logEvent", eventtype::log},
    {type::eventType, "signpostEvent", eventtype::signpost},
    {type::eventType, "lossEvent", eventtype::loss},
    {type::eventType, "stateEvent", eventtype::state, Standing::Main, false},
    {type::eventType, "timesyncEvent", eventtype::timesync, Standing::Main, false},
    {type::signpostType, "begin", 1},
    {type::signpostType, "intervalBegin", 1, synonym},
    {type::signpostType, "end", 2},
    {type::signpostType, "intervalEnd", 2, synonym},
    {type::signpostType, "event", 3},
    {type::signpostScope, "thread", 1},
    {type::signpostScope, "process", 2},
    {type::signpostScope, "system", 3},
}};

} // namespace

std::optional<Value> symbolicValue(Types symbolicType, std::string_view name)
{
    for (const SymbolRow& symbol : symbols) {
        if (symbol.type == symbolicType && equalIgnoringAsciiCase(symbol.name, name))
            return symbol.numbered ? Value::integer(symbol.number) : Value::symbol(symbol.number);
    }
    return std::nullopt;
}

std::string_view fieldOfSymbol(std::string_view name)
{
    struct Owner
    {
        Types type;
        std::string_view field;
    };
    constexpr std::array<Owner, 4> owners = {{{type::logType, "messageType"},
                                              {type::eventType, "eventType"},
                                              {type::signpostType, "signpostType"},
                                              {type::signpostScope, "signpostScope"}}};
    const auto* owner = std::find_if(owners.begin(), owners.end(), [&](const Owner& candidate) {
        return symbolicValue(candidate.type, name).has_value();
    });
    return owner == owners.end() ? std::string_view() : owner->field;
}

std::string symbolicNames(Types symbolicType)
{
    std::vector<std::string_view> names;
    for (const SymbolRow& symbol : symbols) {
        if (symbol.type == symbolicType && symbol.standing == Standing::Main)
            names.push_back(symbol.name);
    }
    return alternatives(names);
}

} // namespace predicate
