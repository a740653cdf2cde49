// SPDX-License-Identifier: MIT
#pragma once

#include "settings/predicateeditor.h"

#include <QPlainTextEdit>
#include <QWidget>

class UserDefaults;

/// The "Predicate Editor" window: the special predicate, stored as it is typed.
class MiniPredView : public QWidget
{
    Q_OBJECT

public:
    MiniPredView(UserDefaults& defaults, PredicateCheck check, QWidget* parent = nullptr);
};

/// The "Gloss" window: gathered messages as plain text that the user may edit.
class TextView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit TextView(UserDefaults& defaults, QWidget* parent = nullptr);

    QSize sizeHint() const override;
};
