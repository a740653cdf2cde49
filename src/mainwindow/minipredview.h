// SPDX-License-Identifier: MIT
#pragma once

#include "settings/predicateeditor.h"

#include <QWidget>

class UserDefaults;

/// The "Predicate Editor" window: the special predicate, stored as it is typed.
class MiniPredView : public QWidget
{
    Q_OBJECT

public:
    MiniPredView(UserDefaults& defaults, PredicateCheck check, QWidget* parent = nullptr);
};
