// SPDX-License-Identifier: MIT
#pragma once

#include <QTextEdit>

#include <functional>
#include <optional>

class QLabel;

/// Returns what is wrong with a predicate, in words for the user, or nothing.
using PredicateCheck = std::function<std::optional<QString>(const QString& predicate)>;

/// The editor for predicates. A line at its lower edge tells whether the predicate is valid and, if
/// not, where and why.
class PredicateEditor : public QTextEdit
{
    Q_OBJECT

public:
    explicit PredicateEditor(PredicateCheck check, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeStatusQuiet();
    void showStatus();

    PredicateCheck m_check;
    QLabel* m_status;
};
