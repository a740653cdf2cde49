// SPDX-License-Identifier: MIT
#pragma once

#include "settings/predicateeditor.h"

#include <QWidget>

class UserDefaults;

/// The "Predicate" tab of the settings, on which predicates are named and added to the library.
class PredTab : public QWidget
{
    Q_OBJECT

public:
    PredTab(UserDefaults& defaults, PredicateCheck check, QWidget* parent = nullptr);
};
