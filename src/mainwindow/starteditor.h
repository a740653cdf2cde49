// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTimeEdit>

/// The editor of a start time, with ASCII digits in every locale. A digit typed without a selection
/// replaces the year, month, day, hour or minute at the cursor. A pasted date and time, such as
/// that of a row, replaces the whole.
class StartEditor final : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit StartEditor(const QDateTime& date, QWidget* parent = nullptr);

    /// Completes a half-typed text: a single digit is a whole month, day, hour or minute. Parts
    /// that are missing or impossible keep their previous value.
    void fixup(QString& input) const override;

Q_SIGNALS:
    /// A time with seconds was pasted. `seconds` has two digits.
    void secondsPasted(const QString& seconds);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool paste(const QString& text);
};
