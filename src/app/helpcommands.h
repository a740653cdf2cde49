// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/contentstate.h"

#include <QAction>
#include <QCoreApplication>

class QMenu;

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
