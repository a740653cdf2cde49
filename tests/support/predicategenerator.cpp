// SPDX-License-Identifier: MIT
#include "support/predicategenerator.h"

using predicate::EntryKind;
using predicate::Field;
using predicate::Value;

std::string PredicateGenerator::text()
{
    static const std::vector<std::string> pieces = {
        "a",      "b",      "A", "B", "k",       "K", "s",      "S",      "ab", " ",
        "\u017F", "\u212A", "é", "É", "e\u0301", "ß", "\u03A3", "\u03C2", "日", "📍"};
    if (!m_texts.empty())
        return oneOf(m_texts);
    std::string out;
    for (std::size_t count = below(5); count > 0; --count)
        out += oneOf(pieces);
    return out;
}

std::string PredicateGenerator::quotedText()
{
    return '"' + text() + '"';
}

std::string PredicateGenerator::textExpression(int depth)
{
    static const std::vector<std::string> fields = {"process", "subsystem",    "SELF.category",
                                                    "sender",  "eventMessage", "#process"};
    if (depth > 0 && below(6) == 0)
        return "TERNARY(" + condition(depth - 1) + ", " + textExpression(depth - 1) + ", NIL)";
    if (depth > 0 && below(6) == 0)
        return "lowercase:(" + textExpression(depth - 1) + ")";
    return sometimes() ? quotedText() : oneOf(fields);
}

std::string PredicateGenerator::numberExpression(int depth)
{
    static const std::vector<std::string> leaves = {"processID",
                                                    "threadIdentifier",
                                                    "size",
                                                    "0",
                                                    "1",
                                                    "-1",
                                                    "2",
                                                    "1.5",
                                                    "YES",
                                                    "18446744073709551615",
                                                    "process.length",
                                                    "{1, 2}.@count"};
    static const std::vector<std::string> signs = {" + ", " - ", " * ", " / ", " ** "};
    if (depth <= 0 || below(2) == 0)
        return oneOf(leaves);
    if (below(5) == 0)
        return "-(" + numberExpression(depth - 1) + ")";
    if (below(5) == 0)
        return "max:(" + numberExpression(depth - 1) + ", " + numberExpression(depth - 1) + ")";
    return "(" + numberExpression(depth - 1) + oneOf(signs) + numberExpression(depth - 1) + ")";
}

std::string PredicateGenerator::options()
{
    return oneOf({"", "", "[c]", "[d]", "[cd]", "[n]", "[l]"});
}

std::string PredicateGenerator::textComparison(int depth)
{
    static const std::vector<std::string> operators = {
        "==", "!=", "<", "<=", ">", ">=", "CONTAINS", "BEGINSWITH", "ENDSWITH", "IN"};
    if (below(8) == 0)
        return textExpression(depth) + " LIKE" + options() + " \""
               + oneOf({"*", "?", "a*", "*b", "*s*", "a?*"}) + '"';
    if (below(8) == 0)
        return textExpression(depth) + " MATCHES" + options() + " \""
               + oneOf({".*", "[ab]+", ".*s.*", "a?b"}) + '"';
    return textExpression(depth) + ' ' + oneOf(operators) + options() + ' ' + textExpression(depth);
}

std::string PredicateGenerator::numberComparison(int depth)
{
    return numberExpression(depth) + ' ' + oneOf({"==", "!=", "<", "<=", ">", ">="}) + ' '
           + numberExpression(depth);
}

std::string PredicateGenerator::listComparison(int depth)
{
    std::string texts = '{' + textExpression(depth);
    for (std::size_t count = below(12); count > 0; --count)
        texts += ", " + (sometimes() ? textExpression(0) : quotedText());
    texts += sometimes() ? ", NIL}" : "}";
    switch (below(5)) {
    case 0: return textExpression(depth) + " IN" + options() + ' ' + texts;
    case 1: return texts + " CONTAINS" + options() + ' ' + textExpression(depth);
    case 2:
        return oneOf({"ANY ", "ALL ", "NONE ", "SOME "}) + texts + " BEGINSWITH" + options() + ' '
               + textExpression(depth);
    case 3:
        return numberExpression(depth) + " BETWEEN {" + numberExpression(depth) + ", "
               + numberExpression(depth) + '}';
    default: return "messageType " + oneOf({"== error", ">= info", "IN {debug, 17}", "!= fault"});
    }
}

std::string PredicateGenerator::comparison(int depth)
{
    if (below(12) == 0)
        return oneOf({"TRUEPREDICATE", "FALSEPREDICATE", "SELF != NIL", "subsystem == NIL"});
    switch (below(3)) {
    case 0: return textComparison(depth);
    case 1: return numberComparison(depth);
    default: return listComparison(depth);
    }
}

std::string PredicateGenerator::condition(int depth)
{
    if (depth <= 0 || sometimes())
        return comparison(depth);
    switch (below(3)) {
    case 0: return "NOT (" + condition(depth - 1) + ')';
    case 1: return '(' + condition(depth - 1) + ") AND (" + condition(depth - 1) + ')';
    default: return '(' + condition(depth - 1) + ") OR (" + condition(depth - 1) + ')';
    }
}

std::string PredicateGenerator::expression(int depth)
{
    static const std::vector<std::string> pieces = {
        "a",   "b", "K",  "ab", "s",  "ss", "é", "ß",    "日",   "\\.",    "\n",   ".*", ".*",
        ".*?", ".", ".+", "a*", "b+", "^",  "$", "[aB]", "[^a]", "a{0,2}", "s{2}", "a?", "\\s"};
    std::string out;
    for (std::size_t count = below(4) + 1; count > 0; --count) {
        if (depth > 0 && sometimes())
            out += oneOf({"(", "(?:", "(?>", "(?=", "(?!"}) + expression(depth - 1) + '|'
                   + expression(depth - 1) + oneOf({")", ")", ")+", ")?", ")*"});
        else
            out += oneOf(pieces);
    }
    return out;
}

MadeUpEntry PredicateGenerator::entry()
{
    static constexpr EntryKind kinds[] = {EntryKind::Log,      EntryKind::Log,
                                          EntryKind::Activity, EntryKind::Signpost,
                                          EntryKind::Boundary, EntryKind::Other};
    MadeUpEntry out(kinds[below(std::size(kinds))]);
    for (const Field field : {Field::Process, Field::Subsystem, Field::Category, Field::Sender,
                              Field::ComposedMessage}) {
        if (below(4) != 0)
            out.set(field, Value::text(text()));
    }
    for (const Field field : {Field::ProcessIdentifier, Field::ThreadIdentifier, Field::Size}) {
        if (below(4) != 0)
            out.set(field, Value::integer(static_cast<std::int64_t>(below(4)) - 1));
    }
    static constexpr int logTypes[] = {0, 1, 2, 16, 17};
    out.set(Field::LogType, Value::integer(logTypes[below(std::size(logTypes))]));
    return out;
}
