// SPDX-License-Identifier: MIT
#include "platform/predicate/matching/types.h"

#include <array>

namespace predicate {

std::string described(Types types)
{
    struct Name
    {
        Types types;
        const char* name;
    };
    static constexpr std::array<Name, 10> names = {{
        {type::logType, "a message type"},
        {type::level, "a level"},
        {type::eventType, "an event type"},
        {type::signpostType, "a signpost type"},
        {type::signpostScope, "a signpost scope"},
        {type::number, "a number"},
        {type::anyText, "a text"},
        {type::date, "a date"},
        {type::list, "a list"},
        {type::entry, "the entry"},
    }};
    if (types == type::nil)
        return "nil";
    for (const Name& name : names) {
        if ((types & ~name.types) == 0)
            return name.name;
    }
    return "of several types";
}

} // namespace predicate
