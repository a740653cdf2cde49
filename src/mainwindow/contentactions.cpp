// SPDX-License-Identifier: MIT
#include "mainwindow/contentactions.h"

#include "mainwindow/contentstate.h"
#include "mainwindow/contentview.h"
#include "platform/desktop/symbols.h"

#include <QAction>
#include <QActionGroup>

using namespace Qt::StringLiterals;

namespace {

struct Command
{
    QString identifier;
    QString label;    ///< in the toolbar
    QString menuText; ///< with its mnemonic
    QString symbol;
    QKeySequence key;
    QString help;
};

template <typename Receiver>
QAction* make(QObject* owner, const Command& command, Receiver* receiver, void (Receiver::*run)())
{
    auto* const action = new QAction(command.menuText, owner);
    action->setObjectName(command.identifier);
    action->setIconText(command.label);
    if (!command.symbol.isEmpty())
        action->setIcon(symbolIcon(command.symbol));
    action->setShortcut(command.key);
    action->setToolTip(command.help);
    action->setStatusTip(command.help);
    QObject::connect(action, &QAction::triggered, receiver, run);
    return action;
}

template <typename Property>
QAction* toggle(QObject* owner,
                const QString& text,
                ContentState& state,
                Property ContentState::*on,
                void (ContentState::*changed)())
{
    auto* const action = new QAction(text, owner);
    action->setCheckable(true);
    action->setChecked((state.*on).value());
    QObject::connect(action, &QAction::toggled, &state,
                     [&state, on](bool checked) { state.*on = checked; });
    QObject::connect(&state, changed, action,
                     [action, &state, on] { action->setChecked((state.*on).value()); });
    return action;
}

QActionGroup* searchFieldGroup(QObject* owner, ContentState& state)
{
    auto* const group = new QActionGroup(owner);
    const QStringList types = ContentState::searchTypes();
    for (qsizetype i = 0; i < types.size(); ++i) {
        QAction* const action = group->addAction(types.at(i));
        action->setCheckable(true);
        action->setData(static_cast<int>(i));
    }
    const auto check = [group, &state] {
        group->actions().at(state.searchTypeIndex)->setChecked(true);
    };
    check();
    QObject::connect(&state, &ContentState::searchTypeIndexChanged, group, check);
    QObject::connect(group, &QActionGroup::triggered, &state, [&state](const QAction* action) {
        state.searchTypeIndex = action->data().toInt();
    });
    return group;
}

} // namespace

ContentActions::ContentActions(ContentView& window, ContentState& state)
{
    const auto command = [&](const Command& made, void (ContentState::*run)()) {
        return make(&window, made, &state, run);
    };
    const auto own = [&](const Command& made, void (ContentView::*run)()) {
        return make(&window, made, &window, run);
    };

    // clang-format off
    getLog = command({u"getlog"_s, tr("Get Log"), tr("&Get Log"), u"arrow.triangle.2.circlepath"_s,
                      Qt::CTRL | Qt::Key_G, tr("Load log entries")}, &ContentState::getLog);
    setArchive = command({u"setarch"_s, tr("Use Logarchive"), tr("Use &Logarchive…"), u"archivebox.fill"_s,
                          {}, tr("Use Logarchive as log source")}, &ContentState::chooseArchive);
    readJSON = command({u"readlog"_s, tr("Read JSON"), tr("&Read JSON…"), u"arrow.up.doc.fill"_s,
                        Qt::CTRL | Qt::Key_O, tr("Read log from JSON file")}, &ContentState::readJSON);
    addNote = command({u"note"_s, tr("Add Note"), tr("Add &Note"), u"text.badge.plus"_s,
                       {}, tr("Add note to selected entries.")}, &ContentState::addNote);
    gloss = command({u"gloss"_s, tr("Gloss"), tr("&Gloss"), u"doc.text.magnifyingglass"_s,
                     {}, tr("Show gloss editor")}, &ContentState::gloss);
    reduce = command({u"reduce"_s, tr("Reduce"), tr("&Reduce"), u"rectangle.compress.vertical"_s,
                      {}, tr("Reduce log entries to search results")}, &ContentState::reduce);
    saveJSON = command({u"savejson"_s, tr("Save JSON"), tr("&Save JSON…"), u"arrow.down.doc.fill"_s,
                        Qt::CTRL | Qt::Key_S, tr("Save log entries in JSON file")}, &ContentState::saveJSON);
    saveRTF = command({u"savertf"_s, tr("Save RTF"), tr("Save R&TF…"), u"square.and.arrow.down.fill"_s,
                       {}, tr("Save log entries as Rich Text")}, &ContentState::saveRTF);
    setPredicate = command({u"setpredicate"_s, tr("Set Predicate"), tr("Set &Predicate…"), {},
                            {}, tr("Write the special predicate")}, &ContentState::setPredicate);
    copy = own({u"copy"_s, tr("Copy"), tr("&Copy"), {}, QKeySequence::Copy,
                tr("Copy the selected entries")}, &ContentView::copy);
    selectAll = own({u"selectall"_s, tr("Select All"), tr("Select &All"), {}, QKeySequence::SelectAll,
                     tr("Select all shown entries")}, &ContentView::selectAll);
    find = own({u"find"_s, tr("Find"), tr("&Find…"), u"magnifyingglass"_s, QKeySequence::Find,
                tr("Go to the search field")}, &ContentView::find);
    largerText = command({u"largertext"_s, tr("Larger Text"), tr("&Larger Text"), {},
                          Qt::CTRL | Qt::Key_Plus, tr("Enlarge the text of the entries")},
                         &ContentState::enlargeText);
    smallerText = command({u"smallertext"_s, tr("Smaller Text"), tr("S&maller Text"), {},
                           Qt::CTRL | Qt::Key_Minus, tr("Shrink the text of the entries")},
                          &ContentState::shrinkText);
    normalText = command({u"normaltext"_s, tr("Normal Text"), tr("&Normal Text"), {},
                          Qt::CTRL | Qt::Key_0, tr("Show the text of the entries in its normal size")},
                         &ContentState::resetText);
    // clang-format on
    // The plus sign without Shift, where it shares a key with the equals sign.
    largerText->setShortcuts({largerText->shortcut(), Qt::CTRL | Qt::Key_Equal});
    fullFields = toggle(&window, tr("&Full Fields"), state, &ContentState::fullMode,
                        &ContentState::fullModeChanged);
    showSignposts = toggle(&window, tr("Show &Signposts"), state, &ContentState::showSignposts,
                           &ContentState::showSignpostsChanged);
    searchFields = searchFieldGroup(&window, state);
    followState(state);
}

/// Disables commands that have nothing to act on, and during a fetch all that use the list.
void ContentActions::followState(ContentState& state)
{
    const auto enable = [actions = *this, &state] {
        const bool isIdle = !state.isFetching();
        const bool hasEntries = isIdle && !state.logger().logList().isEmpty();
        const bool hasSelection = hasEntries && !state.selection.value().isEmpty();
        for (QAction* action : {actions.getLog, actions.setArchive, actions.readJSON})
            action->setEnabled(isIdle);
        for (QAction* action : {actions.saveJSON, actions.saveRTF})
            action->setEnabled(hasEntries);
        for (QAction* action : {actions.addNote, actions.gloss})
            action->setEnabled(hasSelection);
        actions.reduce->setEnabled(hasEntries && state.isSearching()
                                   && !state.searchList().isEmpty());
    };
    for (const auto changed :
         {&ContentState::countTextChanged, &ContentState::selectionChanged,
          &ContentState::searchStateChanged, &ContentState::fetchBegins, &ContentState::fetchEnds})
        QObject::connect(&state, changed, getLog, enable);
    enable();
}
