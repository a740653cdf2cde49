// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/bindcontext.h"

#include "platform/predicate/text/sentences.h"

namespace predicate {

void BindContext::fail(std::size_t position, std::string sentence)
{
    if (!m_error)
        m_error = PredicateError{Stage::Bind, position, std::move(sentence)};
}

TermPtr BindContext::failedTerm(std::size_t position, std::string sentence)
{
    fail(position, std::move(sentence));
    return std::make_shared<ConstantTerm>(Value(), Type{});
}

std::u16string_view BindContext::start(const Node& node, std::size_t length) const
{
    return std::u16string_view(m_text).substr(node.position, length);
}

std::string BindContext::source(const Node& node) const
{
    const std::u16string_view written = start(node, node.end - node.position);
    const auto* text = std::get_if<std::string>(&node.value.value);
    const bool argument = !written.empty() && written.front() == u'%';
    return argument && text != nullptr ? quoted(std::string_view(*text)) : shortened(written);
}

std::string BindContext::sourceIs(const Node& node, Types types) const
{
    return source(node) + " is " + described(types);
}

} // namespace predicate
