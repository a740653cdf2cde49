// SPDX-License-Identifier: MIT
#include "app/helpcommands.h"

#include <QMenu>

using namespace Qt::StringLiterals;

HelpCommands::HelpCommands(OpenWindow openWindow)
    : m_openWindow(std::move(openWindow))
    , m_help(tr("Tessel &Help"))
{
    m_help.setObjectName(u"help"_s);
    m_help.setShortcut(Qt::Key_F1);
    QObject::connect(&m_help, &QAction::triggered, &m_help, [this] { m_openWindow(u"help"_s); });
}

void HelpCommands::addTo(QMenu& menu)
{
    menu.addAction(&m_help);
}
