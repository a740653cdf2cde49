// SPDX-License-Identifier: MIT
#pragma once

#include "app/tesselapp.h"
#include "mainwindow/contentview.h"
#include "platform/desktop/statefile.h"
#include "platform/filemanager.h"
#include "support/fakeplatform.h"
#include "support/smallstore.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <memory>

/// The application over a platform that a test controls, with a local store that passes the checks.
class AppFixture
{
public:
    AppFixture()
    {
        using namespace Qt::StringLiterals;
        constexpr std::int64_t second = 1'000'000'000;
        constexpr std::int64_t bootTime = 1'709'800'000 * second;
        SmallStore store(bootTime);
        for (int i = 0; i < 20; ++i)
            store.log(bootTime + 600 * second + i, "message");
        store.write(path(u"store"_s));
        platform.logStores.localPath = path(u"store"_s);
        for (const QString& folder : {u"db/diagnostics/Persist"_s, u"db/diagnostics/timesync"_s}) {
            QDir().mkpath(path(folder));
            QFile(path(folder + u"/0001"_s)).open(QFile::WriteOnly);
        }
    }

    QString path(const QString& name) const { return platform.folder.filePath(name); }

    Surroundings surroundings() { return surroundings(platform.platform); }
    Surroundings surroundings(const Platform& with)
    {
        return {with,
                files,
                state,
                [this]() -> Result<QString> { return path(QStringLiteral("db")); },
                {}};
    }

    TesselApp& start()
    {
        m_app = std::make_unique<TesselApp>(surroundings());
        return *m_app;
    }
    void end() { m_app.reset(); }

    /// The window of this identifier, freshly opened as the only one; "main" and "settings" are
    /// those without one of their own.
    QWidget& opened(const QString& identifier)
    {
        if (identifier == u"main")
            m_app->newWindow();
        else if (identifier == u"settings")
            m_app->openSettings();
        else
            m_app->openWindow(identifier);
        return *windows().constFirst();
    }

    /// The windows that can be seen, without menus and the like.
    static QList<QWidget*> windows()
    {
        QList<QWidget*> seen;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && widget->windowType() == Qt::Window)
                seen.append(widget);
        }
        return seen;
    }
    static QWidget* window(const QString& title)
    {
        for (QWidget* widget : windows()) {
            if (widget->windowTitle() == title)
                return widget;
        }
        return nullptr;
    }
    /// Windows that have closed go when the event loop next runs.
    static void runDeletions()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    FakePlatform platform;
    SystemFileManager files;
    StateFile state{path(QStringLiteral("state.ini"))};

private:
    std::unique_ptr<TesselApp> m_app;
};
