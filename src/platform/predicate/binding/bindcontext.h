// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/terms.h"
#include "platform/predicate/predicate.h"
#include "platform/predicate/syntax/tree.h"

#include <optional>
#include <string>

namespace predicate {

/// Shared by all steps of binding: the input, the fields that were found, and the first failure.
class BindContext
{
public:
    BindContext(const Tree& tree, const BuildSettings& settings)
        : m_text(tree.text)
        , m_settings(settings)
    {
    }

    const BuildSettings& settings() const { return m_settings; }

    void addField(Field field) { m_fields.set(static_cast<std::size_t>(field)); }
    const Fields& fields() const { return m_fields; }

    /// Keeps the first failure; later ones are ignored.
    void fail(std::size_t position, std::string sentence);
    /// Fails, and returns a constant nil, which has no further errors.
    TermPtr failedTerm(std::size_t position, std::string sentence);
    const std::optional<PredicateError>& error() const { return m_error; }
    bool failed() const { return m_error.has_value(); }

    /// The node as it is written, or the text of an argument.
    std::string source(const Node& node) const;
    /// “NODE is a number” and the like.
    std::string sourceIs(const Node& node, Types types) const;
    /// The first characters of the node.
    std::u16string_view start(const Node& node, std::size_t length) const;

private:
    const std::u16string& m_text;
    const BuildSettings& m_settings;
    Fields m_fields;
    std::optional<PredicateError> m_error;
};

} // namespace predicate
