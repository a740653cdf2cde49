// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

class ContentState;
class ContentView;
class QAction;
class QActionGroup;

/// The commands of a main window. Toolbar, menus and keys share one action for each. The window
/// owns the actions.
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
