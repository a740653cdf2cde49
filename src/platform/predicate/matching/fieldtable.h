// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/field.h"
#include "platform/predicate/matching/types.h"

#include <optional>
#include <string_view>
#include <vector>

namespace predicate {

struct FieldInfo
{
    Types types = type::nil;
    std::uint8_t kinds =
        0;        ///< EntryKind bits of the kinds that carry it; other kinds may carry any field
    int cost = 0; ///< of reading it, in rough multiples of the cheapest

    bool isCarriedBy(EntryKind kind) const
    {
        return kind == EntryKind::Other || (kinds & static_cast<std::uint8_t>(kind)) != 0;
    }
};

const FieldInfo& fieldInfo(Field field);

/// The field of a canonical name or one of its synonyms.
std::optional<Field> fieldNamed(std::string_view name);

/// All names that fieldNamed() knows.
const std::vector<std::string_view>& fieldNames();

/// The field name that was probably meant by an unknown one, or an empty text.
std::string_view suggestedField(std::string_view name);

} // namespace predicate
