// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class QDBusConnection;
class QDBusServer;
class QLockFile;

/// What one start of the program asks for.
struct LaunchRequest
{
    QStringList documents;   ///< absolute paths, or URLs of what is elsewhere; none: a new window
    QString activationToken; ///< the desktop's permission for a window to come forward, or empty
};

/// The documents among the arguments of a start: files, folders and URLs. Options are not.
QStringList documentsOf(const QStringList& arguments);

/// Makes sure that the program runs once: a later start hands its request to the first and ends.
/// They meet on the session bus (org.freedesktop.Application), or without a bus at a socket in a
/// folder of the user's, one for each display.
class SingleInstance final : public QObject
{
    Q_OBJECT

public:
    /// `folder` is for the lock and the socket; it need not exist.
    explicit SingleInstance(QString folder);
    ~SingleInstance() override;
    Q_DISABLE_COPY_MOVE(SingleInstance)

    /// Returns whether this process is the one that runs. If not, the other has the request. A
    /// process that can reach neither bus nor folder runs by itself.
    bool claim(const LaunchRequest& request);

    /// Whether the bus has started this process for a request that is about to come.
    static bool isStartedByBus();

    /// Calls `handler` for each request of another start, at first for those since claim().
    void takeRequests(std::function<void(const LaunchRequest&)> handler);

    /// A request has come in over the bus or the socket.
    void receive(const LaunchRequest& request);

private:
    bool claimOnBus(QDBusConnection bus, const LaunchRequest& request);
    bool claimLocally(const LaunchRequest& request);
    void listen();
    QString socketPath() const;
    void handleRequests();

    QString m_folder;
    std::function<void(const LaunchRequest&)> m_handler;
    QList<LaunchRequest> m_waiting;
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<QDBusServer> m_server;
};
