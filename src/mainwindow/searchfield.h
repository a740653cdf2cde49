// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

/// The list's search field. Return submits the query; Escape clears it and ends the search.
class SearchField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

Q_SIGNALS:
    void submitted();
    void ended();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
