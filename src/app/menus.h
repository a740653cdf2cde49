// SPDX-License-Identifier: MIT
#pragma once

#include "app/helpcommands.h"

#include <QAction>
#include <QList>

#include <functional>

class QMainWindow;
class QMenu;
class QMenuBar;

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

/// A name as the text of a menu item, where an ampersand marks the key.
QString menuText(QString name);

/// The commands and menus that all windows have in common. One action serves all windows.
class Menus final : public QObject
{
    Q_OBJECT

public:
    Menus(AppCommands commands, const QList<WindowMenuItem>& singleWindows);

    /// Puts the common menus into the window's menu bar, beside the window's own. `toolBarActions`
    /// are what the user can do to its toolbar.
    void addTo(QMainWindow& window, const QList<QAction*>& toolBarActions);
    /// For windows without a menu bar: the keys alone.
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
