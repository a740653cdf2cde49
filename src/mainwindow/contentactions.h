// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

class ContentState;
class ContentView;
class QAction;
class QActionGroup;

/// A main window's commands, each one action for the toolbar, the menus and the keys. They belong
/// to the window.
struct ContentActions
{
    Q_DECLARE_TR_FUNCTIONS(ContentActions)

public:
    QAction* getLog;
    QAction* setArchive;
    QAction* readJSON;
    QAction* addNote;
    QAction* gloss;
    QAction* reduce;
    QAction* saveJSON;
    QAction* saveRTF;
    QAction* setPredicate;
    QAction* copy;
    QAction* selectAll;
    QAction* find;
    QAction* largerText;
    QAction* smallerText;
    QAction* normalText;
    QAction* fullFields;
    QAction* showSignposts;
    QActionGroup* searchFields;

    ContentActions(ContentView& window, ContentState& state);

private:
    void followState(ContentState& state);
};
