// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTimeEdit>

/// The editor of a start time. A digit typed where the cursor merely stands replaces the year,
/// month, day, hour or minute there, and a date and time that is pasted, as one copied from a row,
/// replaces all of it.
class StartEditor final : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit StartEditor(const QDateTime& date, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
