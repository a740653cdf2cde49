// SPDX-License-Identifier: MIT
#pragma once

#include "settings/predicateeditor.h"

#include <QTabWidget>

class UserDefaults;

/// The settings window.
class SettingsView : public QTabWidget
{
    Q_OBJECT

public:
    SettingsView(UserDefaults& defaults, PredicateCheck check, QWidget* parent = nullptr);
};
