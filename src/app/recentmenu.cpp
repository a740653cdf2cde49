// SPDX-License-Identifier: MIT
#include "app/recentmenu.h"

#include "app/menus.h"
#include "platform/desktop/statefile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

RecentMenu::RecentMenu(StateFile& state,
                       std::function<void(const QString& path)> open,
                       QWidget* parent)
    : QMenu(tr("&Open Recent"), parent)
    , m_state(state)
    , m_open(std::move(open))
{
    setObjectName(u"recentMenu"_s);
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::list);
}

void RecentMenu::list()
{
    clear();
    const QStringList files = m_state.recentFiles();
    for (const QString& path : files) {
        QAction* const action = addAction(menuText(QFileInfo(path).fileName()));
        action->setToolTip(path);
        action->setEnabled(QFileInfo::exists(path));
        connect(action, &QAction::triggered, this, [this, path] { m_open(path); });
    }
    addSeparator();
    QAction* const clearing = addAction(tr("Clear &Menu"));
    clearing->setEnabled(!files.isEmpty());
    connect(clearing, &QAction::triggered, this, [this] { m_state.clearRecentFiles(); });
}
