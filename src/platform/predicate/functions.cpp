// SPDX-License-Identifier: MIT
#include "platform/predicate/functions.h"

#include "platform/predicate/arithmetic.h"
#include "platform/predicate/sentences.h"
#include "platform/predicate/utf16.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unicode/ustring.h>

namespace predicate {

namespace {

using Values = std::span<const Value>;

template <char sign>
Value twoNumbers(Values arguments, Match&)
{
    return arithmetic(sign, arguments[0], arguments[1]);
}

template <char sign>
Value twoBitPatterns(Values arguments, Match&)
{
    return bitwise(sign, arguments[0], arguments[1]);
}

Value absolute(Values arguments, Match&)
{
    const Value& number = arguments.front();
    return compareNumbers(number, Value::integer(0)) < 0 ? negated(number) : number;
}

/// Whole numbers are their own floor and the like.
template <double (*round)(double)>
Value rounded(Values arguments, Match&)
{
    const Value& number = arguments.front();
    return number.isInteger() ? number : Value::real(round(toReal(number)));
}

Value squareRoot(Values arguments, Match&)
{
    return Value::real(std::sqrt(toReal(arguments.front())));
}

using CaseMapping = std::int32_t (*)(
    char16_t*, std::int32_t, const char16_t*, std::int32_t, const char*, UErrorCode*);

template <CaseMapping mapping>
Value inCase(Values arguments, Match& match)
{
    constexpr std::size_t mostGrowth = 3; // units that one unit can become
    const std::u16string source = utf16(arguments.front().asText());
    std::u16string target(source.size() * mostGrowth + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        mapping(target.data(), static_cast<std::int32_t>(target.size()), source.data(),
                static_cast<std::int32_t>(source.size()), "", &status);
    if (U_FAILURE(status))
        return {};
    std::string& text = match.newText();
    text = utf8(std::u16string_view(target).substr(0, static_cast<std::size_t>(length)));
    return Value::text(text);
}

Value sum(Values elements, Match&)
{
    Value total = Value::integer(0);
    for (const Value& element : elements)
        total = arithmetic('+', total, element);
    return total;
}

Value count(Values elements, Match&)
{
    return Value::integer(static_cast<std::int64_t>(elements.size()));
}

template <int direction>
Value extreme(Values elements, Match&)
{
    Value result;
    for (const Value& element : elements) {
        const bool better = result.isNil() || compareNumbers(element, result) * direction > 0;
        result = better ? element : result;
    }
    return result;
}

Value average(Values elements, Match& match)
{
    const Value total = sum(elements, match);
    return total.isNil() ? total
                         : arithmetic('/', Value::real(toReal(total)), count(elements, match));
}

constexpr std::array<FunctionInfo, 21> functions = {{
    {"add:to:", 2, type::number, type::integer | type::real, twoNumbers<'+'>},
    {"from:subtract:", 2, type::number, type::integer | type::real, twoNumbers<'-'>},
    {"multiply:by:", 2, type::number, type::integer | type::real, twoNumbers<'*'>},
    {"divide:by:", 2, type::number, type::integer | type::real, twoNumbers<'/'>},
    {"modulus:by:", 2, type::number, type::integer | type::real, twoNumbers<'%'>},
    {"raise:toPower:", 2, type::number, type::integer | type::real, twoNumbers<'^'>},
    {"abs:", 1, type::number, type::integer | type::real, absolute},
    {"floor:", 1, type::number, type::integer | type::real, rounded<std::floor>},
    {"ceiling:", 1, type::number, type::integer | type::real, rounded<std::ceil>},
    {"trunc:", 1, type::number, type::integer | type::real, rounded<std::trunc>},
    {"sqrt:", 1, type::number, type::real, squareRoot},
    {"lowercase:", 1, type::anyText, type::text, inCase<u_strToLower>},
    {"uppercase:", 1, type::anyText, type::text, inCase<u_strToUpper>},
    {"bitwiseAnd:with:", 2, type::wholeNumber, type::integer, twoBitPatterns<'&'>},
    {"bitwiseOr:with:", 2, type::wholeNumber, type::integer, twoBitPatterns<'|'>},
    {"bitwiseXor:with:", 2, type::wholeNumber, type::integer, twoBitPatterns<'^'>},
    {"sum:", 0, type::number, type::integer | type::real, sum},
    {"count:", 0, type::scalar | type::list, type::integer, count},
    {"min:", 0, type::number, type::integer | type::real, extreme<-1>},
    {"max:", 0, type::number, type::integer | type::real, extreme<1>},
    {"average:", 0, type::number, type::real, average},
}};

} // namespace

const FunctionInfo* functionNamed(std::string_view name)
{
    for (const FunctionInfo& function : functions) {
        if (function.name == name)
            return &function;
    }
    return nullptr;
}

std::string_view suggestedFunction(std::string_view name)
{
    std::vector<std::string_view> names;
    names.reserve(functions.size());
    for (const FunctionInfo& function : functions)
        names.push_back(function.name);
    return nearest(name, names);
}

} // namespace predicate
