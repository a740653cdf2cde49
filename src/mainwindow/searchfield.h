// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

/// The list's search field. Return submits the query; Escape clears it and submits that.
class SearchField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

Q_SIGNALS:
    void submitted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
