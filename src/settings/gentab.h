// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class UserDefaults;

/// The "General" tab of the settings: what a new main window starts with, and the appearance.
class GenTab : public QWidget
{
    Q_OBJECT

public:
    explicit GenTab(UserDefaults& defaults, QWidget* parent = nullptr);
};
