// SPDX-License-Identifier: MIT
#pragma once

#include "settings/predicateeditor.h"

#include <QTabWidget>
#include <QWidget>

class UserDefaults;

/// The "General" tab of the settings: what a new main window starts with, and the appearance.
class GenTab : public QWidget
{
    Q_OBJECT

public:
    explicit GenTab(UserDefaults& defaults, QWidget* parent = nullptr);
};

/// The "Predicate" tab of the settings, on which predicates are named and added to the library.
class PredTab : public QWidget
{
    Q_OBJECT

public:
    PredTab(UserDefaults& defaults, PredicateCheck check, QWidget* parent = nullptr);
};

/// The settings window.
class SettingsView : public QTabWidget
{
    Q_OBJECT

public:
    SettingsView(UserDefaults& defaults, PredicateCheck check, QWidget* parent = nullptr);
};
