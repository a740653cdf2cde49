// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "model/entrylistfile.h"
#include "platform/desktop/qtpanels.h"
#include "settings/preferences.h"
#include "support/testcase.h"

#include <QFileDialog>
#include <QPalette>
#include <QPointer>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Alerts under which the event loop runs, as it does under real ones.
class PatientAlerts final : public Alerts
{
public:
    void critical(const QString&, const QString& informativeText) override
    {
        mostAtOnce = std::max(mostAtOnce, ++m_open);
        shown.append(informativeText);
        QCoreApplication::processEvents();
        --m_open;
    }
    bool offer(const QString&, const QString&, const QString&) override { return false; }

    QStringList shown;
    int mostAtOnce = 0;

private:
    int m_open = 0;
};

} // namespace

class TestTesselApp : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_fixture = std::make_unique<AppFixture>();
    }

    void cleanup()
    {
        m_fixture.reset();
        QVERIFY(AppFixture::windows().isEmpty());
    }

    // The first test: the dark appearance stays for the rest of the process.
    void systemAppearanceIsLeftAlone()
    {
        const QPalette before = QApplication::palette();
        m_fixture->platform.defaults.set(preferences::lightMode.key, true);
        start();
        QCOMPARE(QApplication::palette(), before);
    }

    void startsDark_data()
    {
        QTest::addColumn<bool>("stored");
        QTest::newRow("nothing stored") << false;
        QTest::newRow("light mode off") << true;
    }

    void startsDark()
    {
        QFETCH(bool, stored);
        QApplication::setPalette(QPalette(Qt::lightGray));
        if (stored)
            m_fixture->platform.defaults.set(preferences::lightMode.key, false);
        start();
        const QPalette palette = mainWindow().palette();
        QVERIFY(palette.color(QPalette::Base).lightnessF() < 0.2F);
        QVERIFY(palette.color(QPalette::Text).lightnessF() > 0.8F);
    }

    void checksComeBeforeAnyWindow()
    {
        QDir(m_fixture->path(u"db"_s)).removeRecursively();
        m_fixture->start();
        QCOMPARE(m_fixture->platform.alerts.shown.size(), 2);
        QVERIFY(AppFixture::windows().isEmpty());
    }

    void failedCheckAsksToQuit()
    {
        QVERIFY(!m_fixture->start().isAskedToQuit());
        QDir(m_fixture->path(u"db/diagnostics/timesync"_s)).removeRecursively();
        QVERIFY(m_fixture->start().isAskedToQuit());
    }

    void storeWithoutEntriesDoesNotQuit()
    {
        m_fixture->platform.logStores.localPath.reset();
        QVERIFY(!m_fixture->start().isAskedToQuit());
        QCOMPARE(m_fixture->platform.alerts.shown.size(), 1);
    }

    void startsWithOneMainWindow()
    {
        start();
        QCOMPARE(AppFixture::windows(), QList<QWidget*>{&mainWindow()});
        QVERIFY(mainWindow().state().logger().logList().isEmpty());
    }

    void newWindowsTakeThePresentPreferences()
    {
        start();
        UserDefaults& defaults = m_fixture->platform.defaults;
        mainWindow().state().period = u"7"_s;
        defaults.set(preferences::period.key, u"60"_s);
        defaults.set(preferences::showSignposts.key, true);
        m_app->newWindow();
        QCOMPARE(m_app->mainWindows().size(), 2);
        QCOMPARE(mainWindow(0).state().period.value(), u"7"_s);
        QCOMPARE(mainWindow(1).state().period.value(), u"60"_s);
        QVERIFY(!mainWindow(0).state().showSignposts);
        QVERIFY(mainWindow(1).state().showSignposts);
    }

    void documentsOpenInTheirWindows()
    {
        const QString list = m_fixture->path(u"list.tessel"_s);
        QVERIFY(saveEntryList({LogEntry()}, list));
        const QString archive = m_fixture->path(u"some.logarchive"_s);
        QVERIFY(QDir().mkdir(archive));
        const QString text = m_fixture->path(u"text"_s);
        QVERIFY(QFile::copy(list, text));
        start({QDir::current().relativeFilePath(list), m_fixture->path(u"nowhere"_s),
               archive + u'/', u"file://"_s + text});
        QCOMPARE(m_app->mainWindows().size(), 3);
        QCOMPARE(m_fixture->platform.alerts.shown.size(), 1);
        QCOMPARE(mainWindow(2).state().logger().logList().size(), 1);
        QVERIFY(!mainWindow(0).state().logger().usingArchive());
        QCOMPARE(mainWindow(0).state().logger().logList().size(), 1);
        QCOMPARE(mainWindow(1).state().logger().archURL().value_or(QUrl()),
                 QUrl::fromLocalFile(archive));
    }

    void otherThingsAreReported_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("reason");
        const QString folder = m_folder.path() + u'/';
        QTest::newRow("no list") << folder + u"nowhere.tessel"_s << u"No such file"_s;
        QTest::newRow("no archive") << folder + u"nowhere.logarchive"_s << u"no such folder"_s;
        QTest::newRow("archive that is a file")
            << folder + u"file.logarchive"_s << u"no such folder"_s;
        QTest::newRow("folder") << folder + u"empty"_s << u"no log files"_s;
        QTest::newRow("trace file") << folder + u"a.tracev3"_s << u"not JSON"_s;
        QTest::newRow("device") << u"/dev/zero"_s << u"not a file"_s;
        QTest::newRow("elsewhere") << u"smb://host/list.tessel"_s << u"this computer"_s;
    }

    void otherThingsAreReported()
    {
        QFETCH(QString, document);
        for (const QString& name : {u"file.logarchive"_s, u"a.tracev3"_s}) {
            QFile file(m_folder.filePath(name));
            QVERIFY(file.open(QFile::WriteOnly) && file.write("\0\x10", 2) == 2);
        }
        QDir(m_folder.path()).mkdir(u"empty"_s);
        start({document});
        QCOMPARE(m_fixture->platform.alerts.shown.size(), 1);
        const QString told = m_fixture->platform.alerts.shown.first().informativeText;
        QVERIFY2(told.contains(document), qPrintable(told));
        QFETCH(QString, reason);
        QVERIFY2(told.contains(reason), qPrintable(told));
        QCOMPARE(m_app->mainWindows().size(), 1);
        QVERIFY(!mainWindow().state().logger().usingArchive());
        QVERIFY(m_fixture->state.recentFiles().isEmpty());
    }

    void optionsAreIgnored()
    {
        start({u"--period=60"_s, QString()});
        QCOMPARE(m_app->mainWindows().size(), 1);
        QVERIFY(m_fixture->platform.alerts.shown.isEmpty());
    }

    void singleWindowsExistOnce_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("title");
        QTest::newRow("help") << u"help"_s << u"Help Window"_s;
        QTest::newRow("diagnostics") << u"diagtool"_s << u"Diagnostics Tool"_s;
        QTest::newRow("archives") << u"logarchtool"_s << u"Logarchive Tool"_s;
        QTest::newRow("predicate") << u"miniPredView"_s << u"Predicate Editor"_s;
        QTest::newRow("gloss") << u"textView"_s << u"Gloss"_s;
    }

    void singleWindowsExistOnce()
    {
        QFETCH(QString, identifier);
        QFETCH(QString, title);
        start();
        m_app->openWindow(identifier);
        const QPointer<QWidget> window = AppFixture::window(title);
        QVERIFY(window);
        QTRY_VERIFY(window->isActiveWindow());

        mainWindow().activateWindow();
        QTRY_VERIFY(!window->isActiveWindow());
        window->showMinimized();
        m_app->openWindow(identifier);
        QTRY_VERIFY(window->isActiveWindow());
        QVERIFY(!window->isMinimized());
        QCOMPARE(AppFixture::windows().size(), 2);

        window->close();
        AppFixture::runDeletions();
        QVERIFY(!window);
        m_app->openWindow(identifier);
        QVERIFY(AppFixture::window(title));
    }

    void settingsBeginWithGeneral()
    {
        start();
        m_app->openSettings();
        m_app->openSettings();
        QCOMPARE(AppFixture::windows().size(), 2);
        auto* settings = qobject_cast<QTabWidget*>(AppFixture::window(u"Settings"_s));
        QCOMPARE(settings->currentIndex(), 0);
        settings->setCurrentIndex(1);
        m_app->openSettings();
        QCOMPARE(settings->currentIndex(), 1);
        settings->close();
        AppFixture::runDeletions();
        m_app->openSettings();
        QCOMPARE(qobject_cast<QTabWidget*>(AppFixture::window(u"Settings"_s))->currentIndex(), 0);
    }

    void closedWindowFreesItsModel()
    {
        start();
        m_app->newWindow();
        const QPointer<Logger> logger = &mainWindow(1).state().logger();
        m_app->mainWindows().at(1)->close();
        AppFixture::runDeletions();
        QVERIFY(!logger);
        QCOMPARE(m_app->mainWindows().size(), 1);
    }

    void panelOutlivesItsWindow()
    {
        start();
        m_app->newWindow();
        const QPointer<Logger> logger = &mainWindow(1).state().logger();
        mainWindow(1).state().chooseArchive();
        m_app->mainWindows().at(1)->close();
        AppFixture::runDeletions();
        QVERIFY(logger);
        m_fixture->platform.panels.confirm(m_fixture->path(u"any.logarchive"_s));
        QVERIFY(!logger);
        QVERIFY(m_fixture->platform.alerts.shown.isEmpty());
    }

    void endsWithWindowsAndPanelsOpen()
    {
        QtPanels panels(m_fixture->state);
        const Platform& fake = m_fixture->platform.platform;
        const Surroundings surroundings = m_fixture->surroundings(
            {panels, fake.alerts, fake.defaults, fake.logStores, fake.processes, fake.clock});
        QPointer<Logger> logger;
        {
            TesselApp app(surroundings);
            ContentView& window = app.newWindow();
            logger = &window.state().logger();
            for (const QString& identifier : {u"help"_s, u"diagtool"_s, u"textView"_s})
                app.openWindow(identifier);
            app.openSettings();
            QTRY_VERIFY(QApplication::activeWindow());
            window.state().chooseArchive();
            QTRY_VERIFY(QApplication::activeModalWidget());
            QVERIFY(logger);
        }
        QVERIFY(!logger);
        QVERIFY(AppFixture::windows().isEmpty());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void troubleAtTheStartIsToldInOrder()
    {
        QFile file(m_fixture->path(u"damaged.conf"_s));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("no settings at all\xff");
        file.close();
        UserDefaults damaged(file.fileName());
        QPalette atPreparation;
        PatientAlerts alerts;
        const Platform& fake = m_fixture->platform.platform;
        Surroundings surroundings = m_fixture->surroundings(
            {fake.panels, alerts, damaged, fake.logStores, fake.processes, fake.clock});
        surroundings.prepareLocalStore = [&]() -> Result<QString> {
            atPreparation = QApplication::palette();
            return failure("The disk is full.");
        };
        QApplication::setPalette(QPalette(Qt::lightGray));
        {
            const TesselApp app(surroundings);
            QVERIFY(atPreparation.color(QPalette::Base).lightnessF() < 0.2F);
            QVERIFY(alerts.shown.first().contains(u"disk is full"_s));
            QVERIFY(alerts.shown.last().contains(file.fileName()));
            QCOMPARE(alerts.shown.size(), 2);
            QVERIFY(!app.isAskedToQuit());
        }
        QCoreApplication::processEvents();
        QCOMPARE(alerts.shown.filter(file.fileName()).size(), 1);
        QCOMPARE(alerts.mostAtOnce, 1);
    }

private:
    ContentView& mainWindow(qsizetype index = 0)
    {
        return *qobject_cast<ContentView*>(m_app->mainWindows().at(index));
    }
    void start(const QStringList& paths = {})
    {
        m_app = &m_fixture->start();
        m_app->open({documentsOf(paths), {}});
    }

    QTemporaryDir m_folder;
    std::unique_ptr<AppFixture> m_fixture;
    TesselApp* m_app = nullptr;
};

TESSEL_TEST(TestTesselApp)
#include "tst_tesselapp.moc"
