// SPDX-License-Identifier: MIT
#include "app/toolbarcustomisation.h"

#include "app/toolbardialog.h"
#include "platform/desktop/statefile.h"

#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 24;

} // namespace

ToolBarCustomisation::ToolBarCustomisation(QToolBar* bar, StateFile& state)
    : QObject(bar)
    , m_bar(bar)
    , m_state(state)
    , m_original(ToolBarArrangement::of(*bar))
    , m_customise(new QAction(tr("&Customise Toolbar…"), this))
{
    for (QAction* action : bar->actions())
        m_actions.insert(action->objectName(), action);
    m_customise->setObjectName(u"customiseToolbar"_s);
    connect(m_customise, &QAction::triggered, this, &ToolBarCustomisation::showDialog);
    bar->setIconSize({iconSize, iconSize});
    bar->toggleViewAction()->setText(tr("&Toolbar"));
    connect(bar->toggleViewAction(), &QAction::triggered, this, [this](bool checked) {
        ToolBarArrangement changed = m_arrangement;
        changed.visible = checked;
        arrange(changed);
    });
    bar->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(bar, &QWidget::customContextMenuRequested, this, &ToolBarCustomisation::showMenu);
    apply(ToolBarArrangement::fromBytes(state.arrangement(bar->objectName()), m_original));
}

void ToolBarCustomisation::arrange(const ToolBarArrangement& arrangement)
{
    m_state.setArrangement(m_bar->objectName(), arrangement.toBytes());
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (auto* other : window->findChildren<ToolBarCustomisation*>()) {
            if (other->m_bar->objectName() == m_bar->objectName())
                other->apply(arrangement);
        }
    }
}

void ToolBarCustomisation::apply(const ToolBarArrangement& arrangement)
{
    m_arrangement = arrangement;
    m_bar->setToolButtonStyle(arrangement.style);
    for (QAction* action : m_bar->actions())
        m_bar->removeAction(action);
    for (const ToolBarArrangement::Item& item : arrangement.items) {
        if (item.shown)
            m_bar->addAction(m_actions.value(item.identifier));
    }
    m_bar->setVisible(arrangement.visible);
    m_bar->toggleViewAction()->setChecked(arrangement.visible); // also before the window is shown
}

void ToolBarCustomisation::showMenu(const QPoint& position)
{
    auto* const menu = new QMenu(m_bar);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addItemSwitches(*menu);
    menu->addSeparator();
    addStyles(*menu);
    menu->addSeparator();
    menu->addAction(m_customise);
    menu->popup(m_bar->mapToGlobal(position));
}

void ToolBarCustomisation::addItemSwitches(QMenu& menu)
{
    for (qsizetype i = 0; i < m_arrangement.items.size(); ++i) {
        const auto& [identifier, shown] = m_arrangement.items.at(i);
        QAction* const item = menu.addAction(itemName(*m_actions.value(identifier)));
        item->setCheckable(true);
        item->setChecked(shown);
        connect(item, &QAction::toggled, this, [this, i](bool checked) {
            ToolBarArrangement arrangement = m_arrangement;
            arrangement.items[i].shown = checked;
            arrange(arrangement);
        });
    }
}

void ToolBarCustomisation::addStyles(QMenu& menu)
{
    auto* const group = new QActionGroup(&menu);
    const auto add = [&](const QString& text, Qt::ToolButtonStyle style) {
        QAction* const choice = group->addAction(menu.addAction(text));
        choice->setCheckable(true);
        choice->setChecked(m_arrangement.style == style);
        connect(choice, &QAction::triggered, this, [this, style] {
            ToolBarArrangement arrangement = m_arrangement;
            arrangement.style = style;
            arrange(arrangement);
        });
    };
    add(tr("&Icons and Text"), Qt::ToolButtonTextUnderIcon);
    add(tr("I&cons Only"), Qt::ToolButtonIconOnly);
    add(tr("&Text Only"), Qt::ToolButtonTextOnly);
}

void ToolBarCustomisation::showDialog()
{
    auto* const dialog = new ToolBarDialog(m_actions, m_arrangement, m_original, m_bar->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &ToolBarDialog::arranged, this, &ToolBarCustomisation::arrange);
    dialog->open();
}
