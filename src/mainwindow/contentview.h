// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/contentactions.h"
#include "mainwindow/contentstate.h"

#include <QMainWindow>

#include <memory>

class EntryPane;
class QLineEdit;
class QMenu;
class WorkPanel;

/// The menus with a main window's own commands. The caller adds what all windows have in common.
struct ContentMenus
{
    QMenu* file;
    QMenu* edit;
    QMenu* view;
};

/// The main log window: the controls, toolbar and list of a ContentState.
class ContentView final : public QMainWindow
{
    Q_OBJECT

public:
    ContentView(const Platform& platform,
                OpenWindow openWindow,
                PredicateBuilder buildPredicate,
                QWidget* parent = nullptr);
    ~ContentView() override;
    Q_DISABLE_COPY_MOVE(ContentView)

    ContentState& state() { return m_state; }
    const ContentActions& commands() const { return m_commands; }
    const ContentMenus& menus() const { return m_menus; }

    void copy();
    void selectAll();
    void find();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void addMenus();
    void addToolBar();
    void watchFetches();
    void endFetch();
    QLineEdit* focusField() const;

    ContentState m_state;
    EntryPane* m_pane;
    ContentActions m_commands;
    ContentMenus m_menus;
    std::unique_ptr<WorkPanel> m_fetchPanel; ///< while a fetch runs
    bool m_isClosedInFetch = false;
    bool m_deletesAfterFetch = false;
};
