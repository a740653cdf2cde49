// SPDX-License-Identifier: MIT
#pragma once

#include <QTextEdit>

#include <functional>
#include <optional>

class QLabel;

/// What is wrong with a predicate, for people; nothing when it is right.
using PredicateCheck = std::function<std::optional<QString>(const QString& predicate)>;

/// The editor in which predicates are written. A quiet line along its lower edge says whether the
/// predicate can be read and, if not, where and why.
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
