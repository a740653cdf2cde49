// SPDX-License-Identifier: MIT
#include "platform/predicate/predicate.h"

#include "platform/predicate/binding/binder.h"
#include "platform/predicate/syntax/lexer.h"
#include "platform/predicate/syntax/parser.h"
#include "platform/predicate/text/utf16.h"

namespace predicate {

namespace {

/// Whether to report the parser's error rather than the lexer's: the first in the text counts. But
/// when a quotation mark inside a text ended the text too early, the lexer's error at the last
/// mark, which has no partner, explains more.
bool comesFirst(const PredicateError& order,
                const PredicateError& noToken,
                std::u16string_view text)
{
    if (order.position >= noToken.position)
        return false;
    const char16_t first = text[noToken.position];
    const bool quote = first == u'"' || first == u'\'';
    return !quote || order.position == 0 || text[order.position - 1] != first;
}

} // namespace

tl::expected<Tree, PredicateError> parse(std::string_view formatText, const Arguments& arguments)
{
    Tree tree;
    tree.text = utf16(formatText);
    Tokens read = tokens(tree.text);
    auto root = Parser(tree.text, std::move(read.found), arguments).run();
    if (read.error && (root || !comesFirst(root.error(), *read.error, tree.text)))
        return tl::unexpected(*std::move(read.error));
    if (!root)
        return tl::unexpected(std::move(root).error());
    tree.root = *std::move(root);
    return tree;
}

tl::expected<Predicate, PredicateError> bind(const Tree& tree, const BuildSettings& settings)
{
    BindContext context(tree, settings);
    return Binder(context).run(tree.root).map([&](ConditionPtr condition) {
        return Predicate(std::shared_ptr<const Condition>(std::move(condition)), context.fields());
    });
}

tl::expected<Predicate, PredicateError>
build(std::string_view formatText, const Arguments& arguments, const BuildSettings& settings)
{
    return parse(formatText, arguments).and_then([&](const Tree& tree) {
        return bind(tree, settings);
    });
}

Matcher::Matcher(Predicate predicate)
    : m_predicate(std::move(predicate))
    , m_match(std::make_unique<Match>())
{
}
Matcher::Matcher(Matcher&&) noexcept = default;
Matcher& Matcher::operator=(Matcher&&) noexcept = default;
Matcher::~Matcher() = default;

bool Matcher::matches(const EntryFields& entry)
{
    m_match->begin(entry);
    return m_predicate.m_condition->evaluate(*m_match) == Truth::True;
}

bool Matcher::possible(const EntryFields& known)
{
    m_match->begin(known);
    return m_predicate.m_condition->evaluate(*m_match) != Truth::False;
}

bool Matcher::gaveUp() const
{
    return m_match->gaveUp();
}

} // namespace predicate
