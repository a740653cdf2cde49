// SPDX-License-Identifier: MIT
#pragma once

#include "app/toolbararrangement.h"

#include <QDialog>
#include <QHash>

class QAction;
class QComboBox;
class QListWidget;
class QPushButton;

/// The dialog to arrange a toolbar. Every change takes effect at once and shows a hidden toolbar.
class ToolBarDialog final : public QDialog
{
    Q_OBJECT

public:
    /// `items` are all possible items of the toolbar by identifier, `original` the arrangement that
    /// the user can restore.
    ToolBarDialog(const QHash<QString, QAction*>& items,
                  const ToolBarArrangement& arrangement,
                  ToolBarArrangement original,
                  QWidget* parent);

Q_SIGNALS:
    void arranged(const ToolBarArrangement& arrangement);

private:
    QPushButton* addButton(const QString& name, const QString& text, void (ToolBarDialog::*run)());
    void layOut();
    void showArrangement(const ToolBarArrangement& arrangement);
    ToolBarArrangement shownArrangement() const;
    void tell();
    void moveUp() { moveCurrent(-1); }
    void moveDown() { moveCurrent(1); }
    void moveCurrent(int rows);
    void restoreOriginal();
    void followCurrent();

    QHash<QString, QAction*> m_items;
    ToolBarArrangement m_original;
    QListWidget* m_list;
    QComboBox* m_style;
    QPushButton* m_up;
    QPushButton* m_down;
};
