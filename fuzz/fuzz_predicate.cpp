// SPDX-License-Identifier: MIT
// Format text, then arguments: each behind a zero byte and a letter for its type.
#include "platform/predicate/matching/fieldtable.h"
#include "platform/predicate/predicate.h"
#include "support/predicateprinter.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace predicate;

Constant argumentOf(std::string_view bytes)
{
    const char kind = bytes.empty() ? '\0' : bytes.front();
    const std::string text(bytes.substr(bytes.empty() ? 0 : 1));
    switch (kind) {
    case 'i': return {std::int64_t{std::strtoll(text.c_str(), nullptr, 10)}};
    case 'u': return {std::uint64_t{std::strtoull(text.c_str(), nullptr, 10)}};
    case 'r': return {std::strtod(text.c_str(), nullptr)};
    case 'b': return {!text.empty()};
    case 'd': return {Date{std::strtoll(text.c_str(), nullptr, 10)}};
    case 'l': return {Constant::List{{text}, {Nil{}}, {std::int64_t{1}}}};
    case 's': return {text};
    default: return {Nil{}};
    }
}

/// Every field nil, set or unknown.
class UniformEntry : public EntryFields
{
public:
    enum class Filling { Nil, Set, Unknown };
    UniformEntry(Filling filling, std::optional<EntryKind> kind) : m_filling(filling), m_kind(kind)
    {
    }

    std::optional<EntryKind> kind() const override { return m_kind; }
    Value field(Field field) const override
    {
        if (m_filling != Filling::Set)
            return m_filling == Filling::Nil ? Value() : Value::unknown();
        const Types types = fieldInfo(field).types;
        if (types == type::text)
            return Value::text("Naïve café: disk4s2 \xF0\x9F\x93\x8D ready");
        if (types == type::uuid)
            return Value::uuid({1, 2, 3});
        return types == type::date ? Value::date(1'700'000'000'123'456'789) : Value::integer(4);
    }

private:
    Filling m_filling;
    std::optional<EntryKind> m_kind;
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void match(const Predicate& predicate)
{
    using Filling = UniformEntry::Filling;
    Matcher matcher(predicate);
    const bool possible = matcher.possible(UniformEntry(Filling::Unknown, std::nullopt));
    for (const EntryKind kind :
         {EntryKind::Log, EntryKind::Boundary, EntryKind::Signpost, EntryKind::Other}) {
        for (const Filling filling : {Filling::Nil, Filling::Set}) {
            const bool matches = matcher.matches(UniformEntry(filling, kind));
            require(possible || !matches);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view text = input.substr(0, input.find('\0'));
    Arguments arguments;
    for (std::size_t at = text.size(); at < input.size();) {
        const std::size_t end = std::min(input.find('\0', at + 1), input.size());
        arguments.push_back(argumentOf(input.substr(at + 1, end - at - 1)));
        at = end;
    }
    const auto tree = parse(text, arguments);
    if (!tree) {
        alertText(tree.error(), text);
        return 0;
    }
    const Printed printed = print(*tree);
    const auto again = parse(printed.text, printed.arguments);
    // The parentheses of the printed form can take it over the greatest depth.
    constexpr std::string_view tooDeep = "The predicate is nested too deeply.";
    require(again ? *again == *tree : again.error().sentence == tooDeep);
    const auto predicate = bind(*tree);
    if (predicate)
        match(*predicate);
    else
        alertText(predicate.error(), text);
    return 0;
}
