// SPDX-License-Identifier: MIT
#include "app/tesselapp.h"

#include "app/contextmenukey.h"
#include "app/dedysfunction.h"
#include "app/helpview.h"
#include "app/predicatebuilding.h"
#include "app/recentmenu.h"
#include "app/toolbarcustomisation.h"
#include "app/windowplace.h"
#include "mainwindow/contentview.h"
#include "mainwindow/textwindows.h"
#include "platform/alerts.h"
#include "platform/desktop/appearance.h"
#include "platform/desktop/statefile.h"
#include "settings/preferences.h"
#include "settings/settingsview.h"
#include "tools/archiveview.h"
#include "tools/diagnosticsview.h"

#include <QApplication>
#include <QToolBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Dark unless the user wants the system's own appearance.
void setAppearance(const UserDefaults& defaults)
{
    if (preferences::value(defaults, preferences::lightMode))
        appearance::followSystem();
    else
        appearance::forceDark();
}

/// Lets the user arrange the window's toolbars. Returns the actions for its menu.
QList<QAction*> customiseToolBars(QMainWindow& window, StateFile& state)
{
    QList<QAction*> actions;
    for (QToolBar* bar : window.findChildren<QToolBar*>()) {
        if (bar->contextMenuPolicy() == Qt::PreventContextMenu)
            continue;
        actions.append(
            {bar->toggleViewAction(), (new ToolBarCustomisation(bar, state))->customise()});
    }
    return actions;
}

} // namespace

TesselApp::TesselApp(Surroundings surroundings)
    : m_surroundings(std::move(surroundings))
    , m_singleWindows(singleWindows())
    , m_menus({[this] { newWindow(); }, [this] { openSettings(); },
               [this](const QString& identifier) { openWindow(identifier); },
               [this] { return mainWindows(); }},
              menuItems(m_singleWindows))
{
    new ContextMenuKey(this);
    startUp();
}

TesselApp::~TesselApp()
{
    for (const QPointer<ContentView>& window : std::as_const(m_mainWindows))
        delete window;
    for (const QPointer<QWidget>& window : std::as_const(m_openOnce))
        delete window;
    // Panels that were open complete after their windows are deleted. Let them do so now, while the
    // platform still exists.
    QCoreApplication::sendPostedEvents(qApp, QEvent::MetaCall);
}

void TesselApp::startUp()
{
    UserDefaults& defaults = m_surroundings.platform.defaults;
    // Failures of the preferences are shown after the checks, so that alerts come one by one.
    QStringList waiting;
    const auto early = connect(&defaults, &UserDefaults::failed, this,
                               [&waiting](const QString& told) { waiting.append(told); });
    setAppearance(defaults);
    runStartUpChecks();
    QCoreApplication::sendPostedEvents(&defaults, QEvent::MetaCall);
    disconnect(early);
    connect(&defaults, &UserDefaults::failed, this, &TesselApp::showAlert);
    for (const QString& told : std::as_const(waiting))
        showAlert(told);
    // Saved here at the end, where there is still somebody to tell that it failed.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [&defaults] {
        defaults.save();
        QCoreApplication::sendPostedEvents(&defaults, QEvent::MetaCall);
    });
}

void TesselApp::runStartUpChecks()
{
    const auto folder = m_surroundings.prepareLocalStore();
    if (!folder)
        showAlert(QString::fromStdString(folder.error().description));
    LocalStoreAccess access{std::nullopt, m_surroundings.administratorsGroup};
    if (folder)
        access.folder = filePath(QUrl::fromLocalFile(*folder));
    deDysfunction(m_surroundings.platform, m_surroundings.files, access, [this] {
        m_askedToQuit = true;
    }).check();
}

void TesselApp::showAlert(const QString& description)
{
    m_surroundings.platform.alerts.critical(tr("An error occurred:"), description);
}

QList<TesselApp::SingleWindow> TesselApp::singleWindows()
{
    const Platform& platform = m_surroundings.platform;
    FileManager& files = m_surroundings.files;
    return {
        {u"help"_s, tr("Help Window"), [] { return new HelpView(helpDocument()); }},
        {u"diagtool"_s, tr("Diagnostics Tool"),
         [&platform, &files] { return new DiagnosticsView(platform, files); }},
        {u"logarchtool"_s, tr("Logarchive Tool"),
         [&platform, &files] { return new ArchiveView(platform, files); }},
        {u"miniPredView"_s, tr("Predicate Editor"),
         [&platform] {
             return new MiniPredView(platform.defaults, predicateCheck(platform.clock));
         }},
        {u"textView"_s, tr("Gloss"), [&platform] { return new TextView(platform.defaults); }},
    };
}

QList<WindowMenuItem> TesselApp::menuItems(const QList<SingleWindow>& windows)
{
    QList<WindowMenuItem> items;
    for (const SingleWindow& window : windows)
        items.append({window.identifier, window.title});
    return items;
}

void TesselApp::open(const LaunchRequest& request)
{
    // On Wayland, a window needs a token to come forward. The toolkit takes it from here.
    if (!request.activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", request.activationToken.toUtf8());
    QPointer<ContentView> window;
    for (const QString& document : request.documents) {
        if (!window)
            window = &newWindow();
        if (window->state().openDocument(document))
            window = nullptr;
    }
    if (request.documents.isEmpty())
        newWindow();
}

ContentView& TesselApp::newWindow()
{
    const Platform& platform = m_surroundings.platform;
    static_cast<void>(m_surroundings.prepareLocalStore()); // Get Log tells of a failure
    auto* const window = new ContentView(
        platform, [this](const QString& identifier) { openWindow(identifier); },
        predicateBuilder(platform.clock));
    addRecentFiles(*window);
    m_mainWindows.removeAll(nullptr);
    m_mainWindows.append(window);
    present(*window, u"main"_s);
    return *window;
}

/// Adds the menu of recent documents, and records those that this window opens.
void TesselApp::addRecentFiles(ContentView& window)
{
    StateFile& recent = m_surroundings.state;
    ContentState& state = window.state();
    auto* const menu = new RecentMenu(
        recent, [&state](const QString& path) { state.openDocument(path); }, &window);
    window.menus().file->insertMenu(window.commands().saveJSON, menu);
    connect(&state, &ContentState::documentOpened, menu,
            [&recent](const QString& path) { recent.addRecentFile(path); });
}

void TesselApp::openWindow(const QString& identifier)
{
    const auto found = std::find_if(
        m_singleWindows.begin(), m_singleWindows.end(),
        [&identifier](const SingleWindow& window) { return window.identifier == identifier; });
    Q_ASSERT(found != m_singleWindows.end());
    openOnce(identifier, [&window = *found] {
        QWidget* const made = window.make();
        made->setWindowTitle(window.title);
        return made;
    });
}

void TesselApp::openSettings()
{
    const Platform& platform = m_surroundings.platform;
    openOnce(u"settings"_s, [&platform] {
        return new SettingsView(platform.defaults, predicateCheck(platform.clock));
    });
}

void TesselApp::openOnce(const QString& identifier, const std::function<QWidget*()>& make)
{
    if (QWidget* const open = m_openOnce.value(identifier); open && open->isVisible())
        return bringForward(*open);
    QWidget* const window = make();
    m_openOnce.insert(identifier, window);
    present(*window, identifier);
}

void TesselApp::present(QWidget& window, const QString& kind)
{
    window.setAttribute(Qt::WA_DeleteOnClose);
    if (auto* const withMenus = qobject_cast<QMainWindow*>(&window))
        m_menus.addTo(*withMenus, customiseToolBars(*withMenus, m_surroundings.state));
    else
        m_menus.addKeysTo(window);
    new WindowPlace(&window, m_surroundings.state, kind);
    bringForward(window);
}

QList<QWidget*> TesselApp::mainWindows() const
{
    QList<QWidget*> open;
    for (const QPointer<ContentView>& window : m_mainWindows) {
        if (window && window->isVisible())
            open.append(window);
    }
    return open;
}
