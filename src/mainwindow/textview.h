// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

class UserDefaults;

/// The "Gloss" window: gathered messages as plain text that the user may edit.
class TextView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit TextView(UserDefaults& defaults, QWidget* parent = nullptr);

    QSize sizeHint() const override;
};
