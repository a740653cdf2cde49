// SPDX-License-Identifier: MIT
#pragma once

#include "platform/alerts.h"
#include "platform/clock.h"
#include "platform/oslogstore.h"
#include "platform/panels.h"
#include "platform/platform.h"
#include "platform/processrunner.h"
#include "platform/userdefaults.h"

#include <QList>
#include <QTemporaryDir>

#include <optional>

/// Panels that a test answers. Requests are kept; a panel stays open until it is answered.
class FakePanels final : public Panels
{
public:
    void open(const OpenPanelRequest& request, PanelCompletion completion) override;
    void save(const SavePanelRequest& request, PanelCompletion completion) override;

    /// Answers the panel opened first of those still open.
    void confirm(const QUrl& location);
    void confirm(const QString& path) { confirm(QUrl::fromLocalFile(path)); }
    void confirmWithoutLocation();
    void cancel();
    bool isOpen() const { return !m_waiting.isEmpty(); }

    QList<OpenPanelRequest> openRequests;
    QList<SavePanelRequest> saveRequests;

private:
    void answer(const PanelResult& result);

    QList<PanelCompletion> m_waiting;
};

/// Keeps the alerts, each dismissed at once.
class FakeAlerts final : public Alerts
{
public:
    struct Shown
    {
        QString message;
        QString informativeText;
    };
    void critical(const QString& message, const QString& informativeText) override;
    bool
    offer(const QString& message, const QString& informativeText, const QString& button) override;

    bool takesOffers = true;
    QList<Shown> shown;
};

/// Stands still until the test moves it.
class FakeClock final : public Clock
{
public:
    QDateTime now() const override { return currentTime; }
    QTimeZone timeZone() const override { return zone; }
    quint64 tickCount() const override { return ticks; }

    QTimeZone zone = QTimeZone("Europe/Berlin");
    QDateTime currentTime = QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9), zone);
    quint64 ticks = 123456789;
};

/// Opens the stores at the paths that a test sets; where there is none, opening fails.
class FakeLogStores final : public LogStores
{
public:
    Result<OSLogStore> local(const logstore::OpenWatch& watch) override;
    Result<OSLogStore> archive(const QString& path, const logstore::OpenWatch& watch) override;

    std::optional<QString> localPath; ///< absent: the local store may not be read
    QStringList opened;               ///< every path asked for; "" for the local store
};

/// Answers every program with one output; absent fails.
class FakeProcessRunner final : public ProcessRunner
{
public:
    Result<QByteArray> output(const QString& program, const QStringList& arguments) override;
    QString userName() const override { return user; }

    std::optional<QByteArray> answer = QByteArray();
    QString user = QStringLiteral("tester");
    QList<QStringList> runs; ///< program and arguments
};

/// Everything a model or window may call on, standing in for the real thing.
struct FakePlatform
{
    QTemporaryDir folder; ///< for the preferences, and for files of the test
    FakePanels panels;
    FakeAlerts alerts;
    UserDefaults defaults{folder.filePath(QStringLiteral("preferences.ini"))};
    FakeLogStores logStores;
    FakeProcessRunner processes;
    FakeClock clock;

    Platform platform{panels, alerts, defaults, logStores, processes, clock};
};
