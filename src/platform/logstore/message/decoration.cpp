// SPDX-License-Identifier: MIT
#include "platform/logstore/message/decoration.h"

#include "platform/logstore/message/decorationtable.h"

#include <algorithm>

namespace logstore {

namespace {

/// Whether a word says nothing of what the argument is.
bool isIgnored(std::string_view word)
{
    return word.empty() || word == "public" || word == "private" || word == "sensitive"
           || word == "auto" || word.starts_with("Name:") || word.starts_with("signpost.")
           || word.starts_with("mask.") || word.find('=') != std::string_view::npos;
}

bool contains(std::string_view letters, char letter)
{
    return letters.find(letter) != std::string_view::npos;
}

/// Whether a decoration of the system takes the argument.
bool systemTakes(const Decoration& decoration, char letter, const Item& item)
{
    const bool isInteger =
        item.isNumber() && contains("dDiuUxXoOcCpm", letter)
        && (decoration.sizes == Decoration::anySize
            || (isNumberSize(item.bytes.size()) && (decoration.sizes & item.bytes.size()) != 0));
    const bool isData = item.kind() == ItemKind::Data && letter == 'P';
    switch (decoration.takes) {
    case Takes::SystemNumber: return isInteger;
    case Takes::SystemData: return isData;
    default: return isInteger || isData;
    }
}

} // namespace

Decorations Decorations::parse(std::string_view words)
{
    Decorations result;
    for (std::size_t comma = 0; comma != std::string_view::npos; words.remove_prefix(comma + 1)) {
        comma = words.find(',');
        std::string_view word = words.substr(0, comma);
        word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
        constexpr std::string_view builtin = "builtin:";
        if (word.starts_with(builtin))
            word.remove_prefix(builtin.size());
        for (const std::string_view label : {"signpost.description", "signpost.telemetry"}) {
            if (word.starts_with(label) && word.substr(label.size()).starts_with(':')) {
                result.signpostLabel = label;
                result.signpostKey = word.substr(label.size() + 1);
            }
        }
        result.masked = result.masked || word.starts_with("mask.");
        if (!isIgnored(word))
            result.decoration = decorationNamed(word);
        if (comma == std::string_view::npos)
            break;
    }
    return result;
}

DecorationResult
appendDecorated(std::string& out, const Decoration& decoration, char letter, const Item& item)
{
    DecorationResult unfit = DecorationResult::Unsupported;
    switch (decoration.takes) {
    case Takes::AnyBytes: break;
    case Takes::Number:
        if (!item.isNumber())
            return DecorationResult::NotDecorated;
        if (!isNumberSize(item.bytes.size()))
            return unfit;
        break;
    case Takes::Text:
        if (!item.isText())
            return DecorationResult::NotDecorated;
        break;
    default:
        unfit = DecorationResult::Mismatch;
        if (!systemTakes(decoration, letter, item))
            return unfit;
        break;
    }
    const Argument argument{item, contains("dDic", letter)};
    return decoration.append(out, argument) ? DecorationResult::Written : unfit;
}

} // namespace logstore
