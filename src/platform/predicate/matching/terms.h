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

/// SELF.
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

/// Operands of one precedence, worked off from the left; a sign for each but the first.
class ChainTerm : public Term
{
public:
    ChainTerm(std::string signs, Terms operands, Type type);
    Value value(Match& match) const override;

private:
    std::string m_signs;
    Terms m_operands;
};

/// A function of the values of its arguments. Unless it takes nil, nil among them gives nil.
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

/// An element of a list, or of the list that an element is, and so on: a text may say this so often
/// that a term for each index would be too deep to walk.
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

/// The list of the elements.
TermPtr listTerm(Terms elements);

/// The term, or its value when it is the same for every entry.
TermPtr foldedConstant(TermPtr term, bool constant);

} // namespace predicate
