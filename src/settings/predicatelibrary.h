// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class UserDefaults;

/// The columns of the library that a new user has.
QStringList defaultPredicateTexts();
QStringList defaultPredicateNames();

/// The user's named predicates in two parallel columns: the text of a row and the name it is chosen
/// by. Nothing makes the columns equally long. The first rows have no text: the window that offers
/// them gives each its meaning by its index.
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

/// The text with typographic double quotation marks, which text systems put in unasked and no
/// predicate can hold, made plain ones.
QString withPlainQuotes(QString text);
