// SPDX-License-Identifier: MIT
#pragma once

#include "app/menus.h"
#include "platform/base/result.h"
#include "platform/desktop/singleinstance.h"
#include "platform/platform.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

class ContentView;
class FileManager;
class StateFile;

/// What the application runs on.
struct Surroundings
{
    Platform platform;
    FileManager& files;
    StateFile& state;
    /// Prepares the local log store for a window that opens now, and returns its folder.
    std::function<Result<QString>()> prepareLocalStore;
    std::optional<QString> administratorsGroup; ///< whose members may read the local store
};

/// The application: its start, and its windows. There may be any number of main windows; every
/// other window exists at most once, under its identifier.
class TesselApp final : public QObject
{
    Q_OBJECT

public:
    /// Sets the appearance and runs the start-up checks. No window is open afterwards.
    explicit TesselApp(Surroundings surroundings);
    Q_DISABLE_COPY_MOVE(TesselApp)
    ~TesselApp() override;

    /// Whether a start-up check has asked to quit.
    bool isAskedToQuit() const { return m_askedToQuit; }

    /// Opens each document in a main window of its own, or an empty window if there are none. An
    /// alert tells which document cannot be opened; its window is used for the next one.
    void open(const LaunchRequest& request);

    ContentView& newWindow();
    /// Opens the window with this identifier, or brings it to the front.
    void openWindow(const QString& identifier);
    void openSettings();

    QList<QWidget*> mainWindows() const;

private:
    struct SingleWindow
    {
        QString identifier;
        QString title;
        std::function<QWidget*()> make;
    };

    QList<SingleWindow> singleWindows();
    static QList<WindowMenuItem> menuItems(const QList<SingleWindow>& windows);
    void startUp();
    void runStartUpChecks();
    void showAlert(const QString& description);
    void addRecentFiles(ContentView& window);
    void openOnce(const QString& identifier, const std::function<QWidget*()>& make);
    void present(QWidget& window, const QString& kind);

    Surroundings m_surroundings;
    QList<SingleWindow> m_singleWindows;
    Menus m_menus;
    QHash<QString, QPointer<QWidget>> m_openOnce;
    QList<QPointer<ContentView>> m_mainWindows;
    bool m_askedToQuit = false;
};
