// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/contentstate.h"

#include <QAction>
#include <QCoreApplication>
#include <QList>

#include <functional>

class QMainWindow;
class QMenu;
class QMenuBar;

/// The Help menu's own command.
class HelpCommands
{
    Q_DECLARE_TR_FUNCTIONS(HelpCommands)

public:
    explicit HelpCommands(OpenWindow openWindow);

    void addTo(QMenu& menu);
    QAction* help() { return &m_help; }

private:
    OpenWindow m_openWindow;
    QAction m_help;
};

/// What the commands common to all windows do.
struct AppCommands
{
    std::function<void()> newWindow;
    std::function<void()> openSettings;
    OpenWindow openWindow;
    std::function<QList<QWidget*>()> mainWindows; ///< those that are open
};

/// A single window's entry in the Window menu.
struct WindowMenuItem
{
    QString identifier;
    QString title;
};

/// The text of a menu item that shows a name: each ampersand is doubled.
QString menuText(QString name);

/// The commands and menus that all windows have in common. One action serves all windows.
class Menus final : public QObject
{
    Q_OBJECT

public:
    Menus(AppCommands commands, const QList<WindowMenuItem>& singleWindows);

    /// Adds the common menus to the window's menu bar. `toolBarActions` are commands for its
    /// toolbar.
    void addTo(QMainWindow& window, const QList<QAction*>& toolBarActions);
    /// Adds only the keys, to a window without a menu bar.
    void addKeysTo(QWidget& window);

private:
    void makeActions(const QList<WindowMenuItem>& singleWindows);
    QMenu* tesselMenu(QMenuBar& bar);
    QMenu* windowMenu(QMenuBar& bar);
    void listMainWindows(QMenu& menu);

    AppCommands m_commands;
    HelpCommands m_helpCommands;
    QAction m_about;
    QAction m_aboutQt;
    QAction m_settings;
    QAction m_quit;
    QAction m_newWindow;
    QAction m_close;
    QAction m_fullScreen;
    QList<QAction*> m_singleWindows;
};
