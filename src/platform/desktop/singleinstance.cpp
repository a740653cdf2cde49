// SPDX-License-Identifier: MIT
#include "platform/desktop/singleinstance.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QThread>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString serviceName = u"org.tessel.Tessel"_s;
const QString objectPath = u"/org/tessel/Tessel"_s;
const QString interfaceName = u"org.freedesktop.Application"_s;
const QString tokenKey = u"activation-token"_s;
const QString startupIdKey = u"desktop-startup-id"_s;

QString tokenOf(const QVariantMap& platformData)
{
    const QString token = platformData.value(tokenKey).toString();
    return token.isEmpty() ? platformData.value(startupIdKey).toString() : token;
}

/// The path of a local file, else the URL as it is.
QString documentOf(const QString& uri)
{
    const QUrl url(uri);
    return url.isLocalFile() ? url.toLocalFile() : uri;
}

bool isUrl(const QString& document)
{
    return document.contains("://"_L1) && !QFileInfo::exists(document);
}

QDBusMessage messageFor(const LaunchRequest& request, const QString& service)
{
    const QString method = request.documents.isEmpty() ? u"Activate"_s : u"Open"_s;
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, objectPath, interfaceName, method);
    if (!request.documents.isEmpty()) {
        QStringList uris;
        for (const QString& document : request.documents)
            uris.append(QDir::isAbsolutePath(document)
                            ? QUrl::fromLocalFile(document).toString(QUrl::FullyEncoded)
                            : document);
        message << uris;
    }
    QVariantMap platformData;
    if (!request.activationToken.isEmpty()) {
        platformData.insert(tokenKey, request.activationToken);
        platformData.insert(startupIdKey, request.activationToken);
    }
    message << platformData;
    message.setAutoStartService(false);
    return message;
}

/// Whether the other process has the request. One that is too busy to answer in time has it, too.
bool handOver(const LaunchRequest& request,
              const QDBusConnection& connection,
              const QString& service = {})
{
    constexpr int patience = 10'000; // ms
    const QDBusMessage answer =
        connection.call(messageFor(request, service), QDBus::Block, patience);
    if (answer.type() != QDBusMessage::ErrorMessage)
        return true;
    const QDBusError::ErrorType error = QDBusError(answer).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout;
}

/// The desktop's interface to an application.
class ApplicationInterface final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationInterface(SingleInstance& instance)
        : QDBusAbstractAdaptor(&instance)
        , m_instance(instance)
    {
    }

    // NOLINTBEGIN(readability-identifier-naming): the names are the interface's
public Q_SLOTS:
    void Activate(const QVariantMap& platformData)
    {
        m_instance.receive({{}, tokenOf(platformData)});
    }

    void Open(const QStringList& uris, const QVariantMap& platformData)
    {
        QStringList documents;
        for (const QString& uri : uris)
            documents.append(documentOf(uri));
        m_instance.receive({documents, tokenOf(platformData)});
    }

    /// The one action of the desktop file is a new window.
    void ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData)
    {
        Activate(platformData);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    SingleInstance& m_instance;
};

QString addressOf(const QString& socket)
{
    return u"unix:path="_s + QString::fromLatin1(QUrl::toPercentEncoding(socket, "/", "~"));
}

/// The display's name as part of a file name: a window on another display is of no use.
QString displayName()
{
    QString name = qEnvironmentVariable("WAYLAND_DISPLAY", qEnvironmentVariable("DISPLAY"));
    return name.replace(QRegularExpression(u"[^A-Za-z0-9]"_s), u"-"_s);
}

} // namespace

QStringList documentsOf(const QStringList& arguments)
{
    QStringList documents;
    for (const QString& argument : arguments) {
        const QString document = documentOf(argument);
        if (isUrl(document))
            documents.append(document);
        else if (QFileInfo::exists(document) || !(document.isEmpty() || document.startsWith(u'-')))
            documents.append(QDir::cleanPath(QDir().absoluteFilePath(document)));
    }
    return documents;
}

SingleInstance::SingleInstance(QString folder) : m_folder(std::move(folder))
{
    new ApplicationInterface(*this);
}

SingleInstance::~SingleInstance()
{
    if (m_server)
        QFile::remove(socketPath());
}

bool SingleInstance::claim(const LaunchRequest& request)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? claimOnBus(bus, request) : claimLocally(request);
}

bool SingleInstance::claimOnBus(QDBusConnection bus, const LaunchRequest& request)
{
    constexpr int attempts = 3; // the other process may end between two calls
    bus.registerObject(objectPath, this);
    for (int i = 0; i < attempts; ++i) {
        const auto reply = bus.interface()->registerService(serviceName);
        if (!reply.isValid() || reply.value() == QDBusConnectionInterface::ServiceRegistered)
            return true;
        if (handOver(request, bus, serviceName))
            return false;
    }
    return true;
}

bool SingleInstance::claimLocally(const LaunchRequest& request)
{
    constexpr int attempts = 20; // while the other process starts or ends
    constexpr int pause = 100;   // ms
    const QString connectionName = u"singleinstance"_s;
    QDir().mkpath(m_folder);
    m_lock = std::make_unique<QLockFile>(socketPath() + u".lock"_s);
    m_lock->setStaleLockTime(0); // only the end of its process frees it
    for (int i = 0; i < attempts; ++i) {
        if (m_lock->tryLock(0)) {
            listen();
            return true;
        }
        if (m_lock->error() != QLockFile::LockFailedError)
            return true;
        const QDBusConnection other =
            QDBusConnection::connectToPeer(addressOf(socketPath()), connectionName);
        const bool isHandedOver = other.isConnected() && handOver(request, other);
        QDBusConnection::disconnectFromPeer(connectionName);
        if (isHandedOver)
            return false;
        QThread::msleep(pause);
    }
    return true;
}

void SingleInstance::listen()
{
    QFile::remove(socketPath()); // of a process that was killed
    m_server = std::make_unique<QDBusServer>(addressOf(socketPath()));
    connect(m_server.get(), &QDBusServer::newConnection, this,
            [this](QDBusConnection other) { other.registerObject(objectPath, this); });
}

QString SingleInstance::socketPath() const
{
    return m_folder + u"/tessel"_s + displayName();
}

bool SingleInstance::isStartedByBus()
{
    return qEnvironmentVariableIsSet("DBUS_STARTER_ADDRESS");
}

void SingleInstance::takeRequests(std::function<void(const LaunchRequest&)> handler)
{
    m_handler = std::move(handler);
    handleRequests();
}

void SingleInstance::receive(const LaunchRequest& request)
{
    m_waiting.append(request);
    // Later, so that the other process has its answer and can end, whatever the documents hold.
    QMetaObject::invokeMethod(this, &SingleInstance::handleRequests, Qt::QueuedConnection);
}

void SingleInstance::handleRequests()
{
    while (m_handler && !m_waiting.isEmpty())
        m_handler(m_waiting.takeFirst());
}

#include "singleinstance.moc"
