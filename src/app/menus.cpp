// SPDX-License-Identifier: MIT
#include "app/menus.h"

#include "app/helpview.h"
#include "app/windowplace.h"
#include "mainwindow/contentview.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

void prepare(QAction& action,
             const QString& name,
             const QString& text,
             const QKeySequence& key = {},
             QAction::MenuRole role = QAction::NoRole)
{
    action.setObjectName(name);
    action.setText(text);
    action.setShortcut(key);
    action.setMenuRole(role);
}

void closeActiveWindow()
{
    if (QWidget* const window = QApplication::activeWindow())
        window->close();
}

void toggleFullScreen()
{
    if (QWidget* const window = QApplication::activeWindow())
        window->setWindowState(window->windowState() ^ Qt::WindowFullScreen);
}

/// The menus of a window's own commands. For other windows than main ones, makes them from the
/// window's actions.
ContentMenus ownMenus(QMainWindow& window)
{
    if (const auto* content = qobject_cast<const ContentView*>(&window))
        return content->menus();
    QMenuBar* const bar = window.menuBar();
    QMenu* const file = bar->addMenu(Menus::tr("&File"));
    QMenu* const view = bar->addMenu(Menus::tr("&View"));
    QMenu* const commands = qobject_cast<HelpView*>(&window) ? view : file;
    commands->addActions(window.actions());
    return {file, nullptr, view};
}

/// Shows the About box over the active window.
void showAbout()
{
    constexpr int iconSize = 96;
    auto* const box = new QMessageBox(QApplication::activeWindow());
    box->setObjectName(u"about"_s);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(QCoreApplication::translate("About", "About Tessel"));
    box->setIconPixmap(QApplication::windowIcon().pixmap(iconSize));
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setText(u"Tessel "_s + QApplication::applicationVersion());
    box->setInformativeText(QCoreApplication::translate(
        "About", "Read, search and annotate the macOS unified log, on any machine.\n\n"
                 "Free software under the MIT licence."));
    box->addButton(QMessageBox::Ok)->setObjectName(u"ok"_s);
    box->open();
}

} // namespace

QString menuText(QString name)
{
    return name.replace(u'&', u"&&"_s);
}

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

Menus::Menus(AppCommands commands, const QList<WindowMenuItem>& singleWindows)
    : m_commands(std::move(commands))
    , m_helpCommands(m_commands.openWindow)
{
    makeActions(singleWindows);
    connect(&m_about, &QAction::triggered, this, &showAbout);
    connect(&m_aboutQt, &QAction::triggered, qApp, &QApplication::aboutQt);
    connect(&m_settings, &QAction::triggered, this, [this] { m_commands.openSettings(); });
    connect(&m_newWindow, &QAction::triggered, this, [this] { m_commands.newWindow(); });
    connect(&m_close, &QAction::triggered, this, &closeActiveWindow);
    connect(&m_fullScreen, &QAction::triggered, this, &toggleFullScreen);
    connect(&m_quit, &QAction::triggered, qApp, &QApplication::quit, Qt::QueuedConnection);
}

void Menus::makeActions(const QList<WindowMenuItem>& singleWindows)
{
    prepare(m_about, u"about"_s, tr("&About Tessel"), {}, QAction::AboutRole);
    prepare(m_aboutQt, u"aboutQt"_s, tr("About Q&t"), {}, QAction::AboutQtRole);
    prepare(m_settings, u"openSettings"_s, tr("&Settings…"), Qt::CTRL | Qt::Key_Comma,
            QAction::PreferencesRole);
    prepare(m_quit, u"quit"_s, tr("&Quit"), Qt::CTRL | Qt::Key_Q, QAction::QuitRole);
    prepare(m_newWindow, u"newWindow"_s, tr("&New Window"), Qt::CTRL | Qt::Key_N);
    prepare(m_close, u"close"_s, tr("&Close"), Qt::CTRL | Qt::Key_W);
    prepare(m_fullScreen, u"fullScreen"_s, tr("F&ull Screen"), Qt::Key_F11);
    for (const auto& [identifier, title] : singleWindows) {
        auto* const action = new QAction(u'&' + title, this);
        action->setObjectName(identifier);
        connect(action, &QAction::triggered, this,
                [this, id = identifier] { m_commands.openWindow(id); });
        m_singleWindows.append(action);
    }
}

void Menus::addTo(QMainWindow& window, const QList<QAction*>& toolBarActions)
{
    QMenuBar& bar = *window.menuBar();
    const ContentMenus own = ownMenus(window);
    bar.insertMenu(own.file->menuAction(), tesselMenu(bar));

    own.file->insertAction(own.file->actions().value(0), &m_newWindow);
    if (own.file->actions().size() > 1)
        own.file->insertSeparator(own.file->actions().at(1));
    own.file->addSeparator();
    own.file->addAction(&m_close);
    own.view->addSeparator();
    own.view->addActions(toolBarActions);
    own.view->addSeparator();
    own.view->addAction(&m_fullScreen);

    bar.addMenu(windowMenu(bar));
    m_helpCommands.addTo(*bar.addMenu(tr("&Help")));
}

void Menus::addKeysTo(QWidget& window)
{
    window.addActions(
        {&m_settings, &m_quit, &m_newWindow, &m_close, &m_fullScreen, m_helpCommands.help()});
}

QMenu* Menus::tesselMenu(QMenuBar& bar)
{
    auto* const menu = new QMenu(tr("&Tessel"), &bar);
    menu->addActions({&m_about, &m_aboutQt});
    menu->addSeparator();
    menu->addAction(&m_settings);
    menu->addSeparator();
    menu->addAction(&m_quit);
    return menu;
}

QMenu* Menus::windowMenu(QMenuBar& bar)
{
    auto* const menu = new QMenu(tr("&Window"), &bar);
    menu->setObjectName(u"windowMenu"_s);
    menu->addActions(m_singleWindows);
    menu->addSeparator();
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { listMainWindows(*menu); });
    return menu;
}

/// Lists the main windows below the separator.
void Menus::listMainWindows(QMenu& menu)
{
    for (QAction* listed : menu.actions().mid(m_singleWindows.size() + 1))
        delete listed;
    for (QWidget* window : m_commands.mainWindows()) {
        QAction* const action =
            menu.addAction(menuText(window->windowTitle().replace("[*][*]"_L1, "[*]"_L1)));
        action->setCheckable(true);
        action->setChecked(window == menu.parentWidget()->window());
        connect(action, &QAction::triggered, window, [window] { bringForward(*window); });
    }
}
