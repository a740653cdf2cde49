// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class UserDefaults;

/// The columns of the default library.
QStringList defaultPredicateTexts();
QStringList defaultPredicateNames();

/// The user's named predicates in two parallel columns, texts and names. The columns may differ in
/// length. The first rows have no text: the main window knows their meaning by the index.
struct PredicateLibrary
{
    QStringList predList;
    QStringList predNames;

    /// The stored library; a column that is not stored is the default one.
    static PredicateLibrary load(const UserDefaults& defaults);
};

/// Adds the predicate being written (the stored `PredicateText`) to the stored library under this
/// name, and clears it. Does nothing, and returns false, when one of the two is empty.
bool appendPredicate(UserDefaults& defaults, const QString& name);

/// Stores the default library.
void resetPredicateLibrary(UserDefaults& defaults);

/// The text with plain quotation marks in place of typographic double ones, which some text systems
/// insert and predicates do not allow.
QString withPlainQuotes(QString text);
