// SPDX-License-Identifier: MIT
#include "app/demonstrationstores.h"
#include "app/tesselapp.h"
#include "platform/clock.h"
#include "platform/desktop/qtalerts.h"
#include "platform/desktop/qtpanels.h"
#include "platform/desktop/singleinstance.h"
#include "platform/desktop/statefile.h"
#include "platform/filemanager.h"
#include "platform/oslogstore.h"
#include "platform/processrunner.h"
#include "platform/userdefaults.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QTimer>
#include <QTranslator>

#include <chrono>
#include <clocale>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Sets no display name: the toolkit would add it to the title of every window.
void setIdentity()
{
    const QString identifier = u"org.tessel.Tessel"_s;
    QCoreApplication::setOrganizationName(u"Tessel"_s);
    QCoreApplication::setOrganizationDomain(u"tessel.org"_s);
    QCoreApplication::setApplicationName(u"Tessel"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(TESSEL_VERSION));
    QGuiApplication::setDesktopFileName(identifier);
    QGuiApplication::setWindowIcon(
        QIcon::fromTheme(identifier, QIcon(u":/icons/org.tessel.Tessel.svg"_s)));
}

/// The number of the group whose members may read the system's log, as text. Absent where no group
/// guards it: there the permissions of its files do.
std::optional<QString> administratorsGroup()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("80");
#else
    return std::nullopt;
#endif
}

/// Installs the translation for the user's language from the folder, else that for English, which
/// has its plurals.
void translate(QTranslator& translator, const QString& name, const QString& folder)
{
    if (translator.load(QLocale(), name, u"_"_s, folder)
        || translator.load(name + u"_en"_s, folder))
        QCoreApplication::installTranslator(&translator);
}

/// The implementations of the platform's interfaces.
struct System
{
    StateFile state{StateFile::defaultPath()};
    UserDefaults defaults{preferencesFile()};
    QtPanels panels{state};
    QtAlerts alerts;
    SystemClock clock;
    DemonstrationStores demonstration{DemonstrationStores::defaultParents(), clock};
    SystemLogStores logStores{{u"/var/db"_s, u"/private/var/db"_s},
                              [this] { return demonstration.folder(); }};
    SystemProcessRunner processes;
    SystemFileManager files;

    Result<QString> prepareLocalStore()
    {
        demonstration.expectPresentMinute();
        return logStores.localFolder();
    }

    Surroundings surroundings()
    {
        return {{panels, alerts, defaults, logStores, processes, clock},
                files,
                state,
                [this] { return prepareLocalStore(); },
                administratorsGroup()};
    }
};

/// The folder in which processes without a session bus find each other.
QString meetingPlace()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QDir::isAbsolutePath(folder) ? folder
                                        : QFileInfo(StateFile::defaultPath()).absolutePath();
}

} // namespace

int main(int argc, char* argv[])
{
    // Read before the toolkit removes them from the environment.
    const QString token =
        qEnvironmentVariable("XDG_ACTIVATION_TOKEN", qEnvironmentVariable("DESKTOP_STARTUP_ID"));
    const QApplication application(argc, argv);
    // The toolkit has set the user's locale. Functions that write and read numbers in messages and
    // property lists need the decimal point.
    std::setlocale(LC_NUMERIC, "C");
    setIdentity();
    QTranslator toolkitTexts;
    QTranslator texts;
    translate(toolkitTexts, u"qtbase"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    translate(texts, u"tessel"_s, u":/translations"_s);
    const LaunchRequest request{documentsOf(QApplication::arguments().mid(1)), token};
    SingleInstance instance(meetingPlace());
    if (!instance.claim(request))
        return EXIT_SUCCESS;
    System system;
    TesselApp tessel(system.surroundings());
    if (tessel.isAskedToQuit())
        return EXIT_SUCCESS;
    if (!request.documents.isEmpty())
        tessel.open({request.documents, {}});
    instance.takeRequests([&tessel](const LaunchRequest& other) { tessel.open(other); });
    constexpr auto patience = 500ms;
    QTimer::singleShot(SingleInstance::isStartedByBus() ? patience : 0ms, &tessel, [&tessel] {
        if (tessel.mainWindows().isEmpty())
            tessel.newWindow();
    });
    return QApplication::exec();
}
