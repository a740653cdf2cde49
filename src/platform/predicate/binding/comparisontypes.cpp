// SPDX-License-Identifier: MIT
#include "platform/predicate/binding/comparisontypes.h"

#include "platform/base/ascii.h"

#include <algorithm>
#include <array>

using namespace std::string_view_literals;

namespace predicate {

namespace {

constexpr std::array<Types, 3> ordered = {type::number, type::anyText, type::date};

/// What is compared on one side: a value, or each element of a list.
struct Operand
{
    Types types = type::nil;
    bool each = false;

    bool fits(Types wanted) const
    {
        if (types == type::nil)
            return true;
        return each ? (types & ~wanted) == 0 : (types & wanted) != 0;
    }
    bool isEntry() const { return (types & type::entry) != 0; }
};

bool haveOrder(const Operand& left, const Operand& right)
{
    return std::any_of(ordered.begin(), ordered.end(),
                       [&](Types family) { return left.fits(family) && right.fits(family); });
}

bool isTextOperator(Operator comparison)
{
    return comparison >= Operator::BeginsWith && comparison <= Operator::Matches;
}

bool isOrder(Operator comparison)
{
    return comparison >= Operator::Less && comparison <= Operator::GreaterOrEqual;
}

/// Whether values of the left types can stand before the operator at all.
bool fitsLeft(Operator comparison, const Operand& left)
{
    if (isTextOperator(comparison))
        return left.fits(type::anyText);
    if (comparison == Operator::Contains)
        return left.fits(type::anyText) || left.fits(type::list);
    if (isOrder(comparison) || comparison == Operator::Between)
        return haveOrder(left, {});
    return true;
}

bool fitsBoth(Operator comparison, const Operand& left, const Operand& right)
{
    const bool texts = left.fits(type::anyText) && right.fits(type::anyText);
    if (isTextOperator(comparison))
        return texts;
    if (comparison == Operator::Contains)
        return left.fits(type::list) || texts;
    if (comparison == Operator::In)
        return right.fits(type::list) || texts;
    return !isOrder(comparison) || haveOrder(left, right);
}

} // namespace

void ComparisonTypes::checkLeft(const Term& left)
{
    const std::string sign(spelling(m_node.comparison));
    const Type& type = left.type();
    const bool quantified = m_node.quantifier != Quantifier::One;
    if (quantified && (type.types & type::list) == 0) {
        const bool some =
            equalIgnoringAsciiCase(m_context.start(m_node, 4), u"some"sv); // means ANY
        const std::string quantifier(some ? "SOME" : spelling(m_node.quantifier));
        const std::string given = m_context.sourceIs(m_node.children[0], type.types);
        return m_context.fail(m_node.children[0].position,
                              quantifier + " needs a list on its left; " + given + ".");
    }
    if (m_node.comparison >= Operator::UtiConformsTo)
        return m_context.fail(m_node.operatorPosition,
                              sign + " is not supported in log predicates.");
    const Operand operand{quantified ? type.elements : type.types, quantified};
    if (fitsLeft(m_node.comparison, operand)
        && !(operand.isEntry() && m_node.comparison > Operator::NotEqual))
        return;
    const std::string given =
        quantified ? "; not every element of " + m_context.source(m_node.children[0]) + " is one."
                   : "; " + m_context.sourceIs(m_node.children[0], type.types) + ".";
    if (operand.isEntry())
        m_context.fail(m_node.operatorPosition, "SELF can only be compared with nil.");
    else if (isTextOperator(m_node.comparison) || m_node.comparison == Operator::Contains)
        m_context.fail(m_node.operatorPosition, sign + " needs a text" + given);
    else
        m_context.fail(m_node.operatorPosition, sign + " needs a number, a text or a date" + given);
}

/// BETWEEN has two bounds on its right.
bool ComparisonTypes::checkBounds(const Term& right)
{
    const Type& type = right.type();
    const bool two = type.fits(type::list) && (!type.count || *type.count == 2);
    if (!two)
        m_context.fail(m_node.children[1].position, "BETWEEN needs two values in braces.");
    return two;
}

void ComparisonTypes::checkSides(const Term& leftTerm, const Term& rightTerm)
{
    const bool quantified = m_node.quantifier != Quantifier::One;
    const Type& leftType = leftTerm.type();
    const Operand left{quantified ? leftType.elements : leftType.types, quantified};
    Operand right{rightTerm.type().types, false};
    const bool entry = left.isEntry() || right.isEntry();
    const bool nilBeside = left.types == type::nil || right.types == type::nil;
    if (entry && (m_node.comparison > Operator::NotEqual || !nilBeside))
        return m_context.fail(m_node.operatorPosition, "SELF can only be compared with nil.");
    const bool between = m_node.comparison == Operator::Between;
    if (between && !checkBounds(rightTerm))
        return;
    if (between)
        right = {rightTerm.type().elements, true};
    if (between ? haveOrder(left, right) : fitsBoth(m_node.comparison, left, right))
        return;
    const std::string sign(spelling(m_node.comparison));
    const std::string leftIs = m_context.sourceIs(m_node.children[0], leftType.types);
    const std::string rightIs = m_context.sourceIs(m_node.children[1], rightTerm.type().types);
    if (m_node.comparison == Operator::In)
        m_context.fail(m_node.operatorPosition,
                       right.fits(type::anyText)
                           ? "IN needs a list on its right, or texts on both sides; " + leftIs + "."
                           : "IN needs a list or a text on its right; " + rightIs + ".");
    else if (between)
        m_context.fail(m_node.operatorPosition,
                       "BETWEEN needs two bounds like what stands on its left; " + leftIs + ".");
    else if (isOrder(m_node.comparison))
        m_context.fail(m_node.operatorPosition, sign
                                                    + " needs two numbers, two texts or two dates; "
                                                    + leftIs + " and " + rightIs + ".");
    else
        m_context.fail(m_node.operatorPosition,
                       sign + " needs a text on its right; " + rightIs + ".");
}

} // namespace predicate
