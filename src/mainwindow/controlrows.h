// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class ContentState;
class QLabel;

/// The two rows of controls above the list: what to fetch, and with which predicate.
class ControlRows final : public QWidget
{
    Q_OBJECT

public:
    explicit ControlRows(ContentState& state, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* fetchRow();
    QWidget* predicateRow();
    QLabel* archiveLabel();
    void colourArchiveLabel();
    QWidget* startEditor();
    QWidget* predicatePicker();
    QLabel* countLabel();

    ContentState& m_state;
    QLabel* m_archiveLabel = nullptr;
};
