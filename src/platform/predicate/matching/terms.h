// SPDX-License-Identifier: MIT
#pragma once

#include "platform/predicate/matching/conditions.h"
#include "platform/predicate/matching/term.h"

#include <deque>
#include <functional>
#include <span>
#include <string>

namespace predicate {

/// A value that owns its text and its elements.
class ConstantTerm : public Term
{
public:
    ConstantTerm(const Value& value, Type type);

    Value value(Match&) const override { return m_value; }
    const Value* constant() const override { return &m_value; }

private:
    Value keep(const Value& value);

    std::deque<std::string> m_texts;
    std::deque<std::vector<Value>> m_lists;
    Value m_value;
};

class FieldTerm : public Term
{
public:
    explicit FieldTerm(Field field);
    Value value(Match& match) const override { return match.field(m_field); }

private:
    Field m_field;
};

/// SELF: the entry itself.
class EntryTerm : public Term
{
public:
    EntryTerm() : Term({type::entry, type::nil, {}}, 0) {}
    Value value(Match&) const override { return Value::entry(); }
};

class ListTerm : public Term
{
public:
    ListTerm(Terms elements, Type type);
    Value value(Match& match) const override;
    const Terms* elements() const override { return &m_elements; }

private:
    Terms m_elements;
};

/// Operands of one precedence, evaluated from the left, with a sign for each but the first.
class ChainTerm : public Term
{
public:
    ChainTerm(std::string signs, Terms operands, Type type);
    Value value(Match& match) const override;

private:
    std::string m_signs;
    Terms m_operands;
};

/// A call. The result is nil when an argument is nil, unless the function takes nil.
class CallTerm : public Term
{
public:
    using Function = std::function<Value(std::span<const Value>, Match&)>;

    CallTerm(Function function, Terms arguments, Type type, bool takesNil = false);
    Value value(Match& match) const override;

private:
    Function m_function;
    Terms m_arguments;
    bool m_takesNil;
};

/// An element of a list, or an element of that element, and so on. One term has all the indices:
/// a predicate may have so many that a term for each would overflow the stack.
class ElementTerm : public Term
{
public:
    struct Place
    {
        enum class Kind { Number, First, Last };

        Kind kind = Kind::Number;
        TermPtr number;

        bool isConstant() const { return !number || number->constant() != nullptr; }
    };

    ElementTerm(TermPtr list, std::vector<Place> places, Type type);
    Value value(Match& match) const override;

private:
    TermPtr m_list;
    std::vector<Place> m_places;
};

class TernaryTerm : public Term
{
public:
    TernaryTerm(ConditionPtr condition, TermPtr whenTrue, TermPtr whenFalse, Type type);
    Value value(Match& match) const override;

private:
    ConditionPtr m_condition;
    TermPtr m_whenTrue;
    TermPtr m_whenFalse;
};

/// A list term of these elements.
TermPtr listTerm(Terms elements);

/// The term, or its value when it is the same for every entry.
TermPtr foldedConstant(TermPtr term, bool constant);

} // namespace predicate
