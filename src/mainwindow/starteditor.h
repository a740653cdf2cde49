// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTimeEdit>

/// The editor of a start time, in ASCII digits whatever the locale. A digit typed where the cursor
/// merely stands replaces the year, month, day, hour or minute there. A date and time that is
/// pasted, as one copied from a row, replaces all of it.
class StartEditor final : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit StartEditor(const QDateTime& date, QWidget* parent = nullptr);

    /// Completes what is half typed: a single digit is a whole day, hour or minute; what is missing
    /// or impossible stays as it was before.
    void fixup(QString& input) const override;

Q_SIGNALS:
    /// The pasted time had seconds: two digits.
    void secondsPasted(const QString& seconds);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool paste(const QString& text);
};
