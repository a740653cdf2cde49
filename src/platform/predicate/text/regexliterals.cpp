// SPDX-License-Identifier: MIT
#include "platform/predicate/text/regexliterals.h"

#include "platform/base/ascii.h"
#include "platform/base/utf8.h"

#include <algorithm>
#include <optional>

namespace predicate {

namespace {

constexpr int deepest = 50;                  // nested groups
constexpr std::size_t mostAlternatives = 32; // more are slower than the expression

struct Piece;
using Sequence = std::vector<Piece>;
using Alternatives = std::vector<Sequence>;

/// A part of an expression, as far as plain texts are concerned.
struct Piece
{
    enum class Kind {
        Text,
        Anything, ///< .*
        LineStart,
        LineEnd,
        Group,    ///< one of its alternatives
        Repeated, ///< a group that matches at least once, but not exactly as its alternatives
        Other
    };

    Kind kind = Kind::Other;
    std::string text;
    Alternatives alternatives;
};

/// How often the piece before it matches.
struct Quantifier
{
    bool once = true;
    bool optional = false;
    bool star = false; ///< greedy or reluctant, but not possessive
};

class ExpressionReader
{
public:
    explicit ExpressionReader(std::string_view expression) : m_rest(expression) {}

    /// No value when the expression has an unsupported construct.
    std::optional<Alternatives> run()
    {
        Alternatives all = alternatives(0);
        return m_failed || !m_rest.empty() ? std::nullopt : std::optional(std::move(all));
    }

private:
    Alternatives alternatives(int depth);
    void piece(Sequence& sequence, int depth);
    Piece group(int depth);
    Piece escape();
    void skipSet();
    Quantifier quantifier();
    void add(Sequence& sequence, Piece piece, Quantifier often);

    bool at(char c) const { return !m_rest.empty() && m_rest.front() == c; }
    bool accept(std::string_view text)
    {
        const bool found = m_rest.substr(0, text.size()) == text;
        m_rest.remove_prefix(found ? text.size() : 0);
        return found;
    }
    /// The bytes of one character; fails at the end.
    std::string character();
    void fail()
    {
        m_failed = true;
        m_rest = {};
    }

    std::string_view m_rest;
    bool m_failed = false;
};

Alternatives ExpressionReader::alternatives(int depth)
{
    Alternatives all(1);
    while (!m_rest.empty() && !at(')')) {
        if (accept("|"))
            all.emplace_back();
        else
            piece(all.back(), depth);
    }
    return all;
}

std::string ExpressionReader::character()
{
    std::size_t length = 0;
    if (m_rest.empty())
        fail();
    else
        nextCharacter(m_rest, length);
    std::string out(m_rest.substr(0, length));
    m_rest.remove_prefix(length);
    return out;
}

void ExpressionReader::piece(Sequence& sequence, int depth)
{
    Piece piece;
    bool dot = false;
    if (accept("(")) {
        piece = group(depth + 1);
    } else if (accept("[")) {
        skipSet();
    } else if (accept("\\")) {
        piece = escape();
    } else if (accept("^")) {
        piece.kind = Piece::Kind::LineStart;
    } else if (accept("$")) {
        piece.kind = Piece::Kind::LineEnd;
    } else if (accept(".")) {
        dot = true;
    } else {
        piece.kind = Piece::Kind::Text;
        piece.text = character();
    }
    const Quantifier often = quantifier();
    if (dot && often.star)
        sequence.push_back({Piece::Kind::Anything, {}, {}});
    else
        add(sequence, std::move(piece), often);
}

/// Reads a group from after its opening parenthesis.
Piece ExpressionReader::group(int depth)
{
    Piece out;
    out.kind = Piece::Kind::Group;
    if (accept("?")) {
        if (accept("=") || accept("!") || accept("<=") || accept("<!")) {
            out.kind = Piece::Kind::Other; // matches no characters of its own
        } else if (accept(">")) {
            out.kind = Piece::Kind::Repeated; // never tries a second alternative
        } else if (accept("<")) {
            m_rest.remove_prefix(std::min(m_rest.find('>'), m_rest.size()));
            accept(">");
        } else if (!accept(":")) {
            fail(); // flags or a comment
        }
    }
    if (depth > deepest)
        fail();
    Alternatives inside = alternatives(depth);
    if (!accept(")"))
        fail();
    if (out.kind != Piece::Kind::Other)
        out.alternatives = std::move(inside);
    return out;
}

/// Reads an escape from after its backslash: a plain character, or a class or anchor.
Piece ExpressionReader::escape()
{
    // These letters take no argument.
    constexpr std::string_view whole = "AbBdDGhHnrRsStvVwWXzZ";
    Piece out;
    const std::string escaped = character();
    const auto first = static_cast<unsigned char>(escaped.empty() ? '\0' : escaped.front());
    if (!isAsciiLetter(first) && !isAsciiDigit(first)) {
        out.kind = Piece::Kind::Text;
        out.text = escaped;
    } else if (whole.find(escaped) == std::string_view::npos) {
        fail();
    }
    return out;
}

/// Skips a set from after its opening bracket, with the sets in it.
void ExpressionReader::skipSet()
{
    accept("^");
    if (at(']'))
        return fail(); // ambiguous
    for (int depth = 1; depth > 0 && !m_failed;) {
        if (accept("\\")) {
            if (at('Q') || at('E'))
                return fail();
            character();
        } else if (accept("[")) {
            ++depth;
            accept("^");
            if (at(']'))
                return fail();
        } else if (accept("]")) {
            --depth;
        } else {
            character();
        }
    }
}

Quantifier ExpressionReader::quantifier()
{
    Quantifier out;
    if (accept("*")) {
        out = {false, true, true};
    } else if (accept("?")) {
        out = {false, true, false};
    } else if (accept("+")) {
        out.once = false;
    } else if (accept("{")) {
        const std::string_view least = m_rest.substr(0, m_rest.find_first_of(",}"));
        out = {false, least.find_first_not_of('0') == std::string_view::npos, false};
        m_rest.remove_prefix(std::min(m_rest.find('}'), m_rest.size()));
        if (!accept("}"))
            fail();
    }
    if (!out.once && accept("+"))
        out.star = false;
    else if (!out.once)
        accept("?");
    return out;
}

void ExpressionReader::add(Sequence& sequence, Piece piece, Quantifier often)
{
    using Kind = Piece::Kind;
    const bool isGroup = piece.kind == Kind::Group || piece.kind == Kind::Repeated;
    if (often.optional || (!often.once && !isGroup && piece.kind != Kind::Text))
        piece = {};
    else if (!often.once && isGroup)
        piece.kind = Kind::Repeated;
    const bool joins =
        piece.kind == Kind::Text && !sequence.empty() && sequence.back().kind == Kind::Text;
    if (joins)
        sequence.back().text += piece.text;
    else
        sequence.push_back(std::move(piece));
    if (!often.once && sequence.back().kind == Kind::Text)
        sequence.emplace_back(); // the repeated character ends the text
}

using Forms = std::vector<PlainForm>;

std::optional<Forms> formsOf(const Alternatives& alternatives, bool anyBefore, bool anyAfter);

/// `anyBefore` and `anyAfter`: whether .* is around the sequence in the whole expression.
std::optional<Forms> formsOf(const Sequence& sequence, bool anyBefore, bool anyAfter)
{
    using Kind = Piece::Kind;
    auto begin = sequence.begin();
    auto end = sequence.end();
    // A line always starts and ends at the ends of the whole text.
    while (begin != end && !anyBefore && begin->kind == Kind::LineStart)
        ++begin;
    while (begin != end && !anyAfter && std::prev(end)->kind == Kind::LineEnd)
        --end;
    for (; begin != end && begin->kind == Kind::Anything; ++begin)
        anyBefore = true;
    for (; begin != end && std::prev(end)->kind == Kind::Anything; --end)
        anyAfter = true;
    if (begin == end)
        return Forms{PlainForm{{}, anyBefore, anyAfter}};
    if (std::next(begin) != end)
        return std::nullopt;
    if (begin->kind == Kind::Group)
        return formsOf(begin->alternatives, anyBefore, anyAfter);
    // To ICU, .* does not end between a carriage return and a line feed.
    if (begin->kind != Kind::Text || (anyBefore && begin->text.front() == '\n'))
        return std::nullopt;
    return Forms{PlainForm{begin->text, anyBefore, anyAfter}};
}

std::optional<Forms> formsOf(const Alternatives& alternatives, bool anyBefore, bool anyAfter)
{
    Forms all;
    for (const Sequence& sequence : alternatives) {
        auto forms = formsOf(sequence, anyBefore, anyAfter);
        if (!forms || all.size() + forms->size() > mostAlternatives)
            return std::nullopt;
        std::move(forms->begin(), forms->end(), std::back_inserter(all));
    }
    return all;
}

using Texts = std::vector<std::string>;

std::size_t shortest(const Texts& texts)
{
    std::size_t length = texts.empty() ? 0 : std::string::npos;
    for (const std::string& text : texts)
        length = std::min(length, text.size());
    return length;
}

Texts requiredBy(const Alternatives& alternatives);

/// The texts of the piece whose shortest text is longest.
Texts requiredBy(const Sequence& sequence)
{
    Texts best;
    for (const Piece& piece : sequence) {
        Texts texts =
            piece.kind == Piece::Kind::Text ? Texts{piece.text} : requiredBy(piece.alternatives);
        if (shortest(texts) > shortest(best))
            best = std::move(texts);
    }
    return best;
}

Texts requiredBy(const Alternatives& alternatives)
{
    Texts all;
    for (const Sequence& sequence : alternatives) {
        Texts texts = requiredBy(sequence);
        if (texts.empty() || all.size() + texts.size() > mostAlternatives)
            return {};
        std::move(texts.begin(), texts.end(), std::back_inserter(all));
    }
    return all;
}

} // namespace

RegexLiterals literalsOf(std::string_view expression)
{
    RegexLiterals out;
    const std::size_t letters = expression.substr(0, 2) == "(?" ? 2 : std::string_view::npos;
    const std::size_t end =
        std::min(expression.find_first_not_of("ims", letters), expression.size());
    if (end < expression.size() && expression[end] == ')') {
        out.caseless = expression.substr(0, end).find('i') != std::string_view::npos;
        expression.remove_prefix(end + 1);
    }
    if (const auto read = ExpressionReader(expression).run()) {
        out.forms = formsOf(*read, false, false).value_or(Forms{});
        out.required = requiredBy(*read);
    }
    return out;
}

} // namespace predicate
