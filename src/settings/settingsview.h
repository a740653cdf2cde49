// SPDX-License-Identifier: MIT
#pragma once

#include "settings/predicateeditor.h"

#include <QTabWidget>

class UserDefaults;

/// Finds a symbol by its name.
using SymbolSource = std::function<QIcon(const QString& name)>;

/// The settings window.
class SettingsView : public QTabWidget
{
    Q_OBJECT

public:
    SettingsView(UserDefaults& defaults,
                 PredicateCheck check,
                 const SymbolSource& symbol,
                 QWidget* parent = nullptr);
};
