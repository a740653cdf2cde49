// SPDX-License-Identifier: MIT
#pragma once

#include "app/toolbararrangement.h"

#include <QHash>
#include <QObject>

class QAction;
class QMenu;
class StateFile;

/// Lets the user arrange a toolbar: whether it is shown, its items and their order, and icons,
/// texts or both. The arrangement is stored under the toolbar's object name. The toolbar owns this
/// object.
class ToolBarCustomisation final : public QObject
{
    Q_OBJECT

public:
    ToolBarCustomisation(QToolBar* bar, StateFile& state);

    /// Opens the dialog.
    QAction* customise() const { return m_customise; }

    const ToolBarArrangement& arrangement() const { return m_arrangement; }
    /// Applies and stores an arrangement, also in toolbars of the same name in other windows.
    void arrange(const ToolBarArrangement& arrangement);

private:
    void showMenu(const QPoint& position);
    void addItemSwitches(QMenu& menu);
    void addStyles(QMenu& menu);
    void showDialog();
    void apply(const ToolBarArrangement& arrangement);

    QToolBar* m_bar;
    StateFile& m_state;
    QHash<QString, QAction*> m_actions; ///< the hidden ones too
    ToolBarArrangement m_original;
    ToolBarArrangement m_arrangement;
    QAction* m_customise;
};
