// SPDX-License-Identifier: MIT
#include "support/fakeplatform.h"
#include "support/logfolder.h"
#include "support/testcase.h"
#include "tools/archiveview.h"
#include "tools/diagnosticsview.h"

#include <QAction>
#include <QCheckBox>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

using namespace Qt::StringLiterals;

class TestToolViews : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<LogFolder>();
        m_platform = std::make_unique<FakePlatform>();
        m_files = FakeFileManager();
    }

    void windowsAreLaidOut_data()
    {
        QTest::addColumn<bool>("archive");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("switches");
        QTest::newRow("diagnostics") << false << u"Diagnostics Tool"_s << QStringList{u"CSV"_s};
        QTest::newRow("logarchive")
            << true << u"Logarchive Tool"_s << QStringList{u"Debug"_s, u"CSV"_s};
    }

    void windowsAreLaidOut()
    {
        QFETCH(bool, archive);
        QFETCH(QStringList, switches);
        const auto window = newWindow(archive);
        QTEST(window->windowTitle(), "title");
        QCOMPARE(shownText(*window), u""_s);
        QVERIFY(!output(*window)->isReadOnly());
        QStringList found;
        for (const QCheckBox* control : window->findChildren<QCheckBox*>()) {
            found.append(control->text());
            QVERIFY(!control->isChecked());
        }
        QCOMPARE(found, switches);
        window->resize(1, 1);
        QVERIFY(window->centralWidget()->width() >= 650);
        QVERIFY(window->centralWidget()->height() >= 200);
    }

    void toolbarsHoldTheCommands_data()
    {
        QTest::addColumn<bool>("archive");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QStringList>("commands");
        QTest::newRow("diagnostics")
            << false << u"DiagnosticsView.toolbar"_s
            << QStringList{u"infodiag|Get Info|Get information on a diagnostics folder"_s,
                           u"catdiag|Catalogue|Catalogue a diagnostics folder"_s,
                           u"analdiag|Analyse|Analyse the contents of a diagnostics folder"_s,
                           u"savediag|Save Text|Save the contents of this window to a file"_s};
        QTest::newRow("logarchive")
            << true << u"ArchiveView.toolbar"_s
            << QStringList{u"copyarch|Create Logarchive|Create a new logarchive from log folders"_s,
                           u"catarch|Catalogue|Catalogue an existing logarchive"_s,
                           u"analarch|Analyse|Analyse the contents of an existing logarchive"_s,
                           u"savearch|Save Text|Save the contents of this window to a file"_s};
    }

    void toolbarsHoldTheCommands()
    {
        QFETCH(bool, archive);
        QFETCH(QString, identifier);
        const auto window = newWindow(archive);
        QStringList found;
        for (const QAction* action : window->findChild<QToolBar*>(identifier)->actions()) {
            found.append(
                QStringList{action->objectName(), action->iconText(), action->toolTip()}.join(
                    u'|'));
            QVERIFY2(!action->icon().isNull(), qPrintable(action->objectName()));
            QCOMPARE(action->text().remove(u'&'),
                     action->iconText() + u'…'); // all ask something first
        }
        QTEST(found, "commands");
    }

    void switchesReachTheirCommands()
    {
        const auto diagnostics = newWindow(false);
        QTest::keyClick(diagnostics->findChild<QCheckBox*>(u"csv"_s), Qt::Key_Space);
        trigger(*diagnostics, u"analdiag"_s);
        QTest::keyClick(diagnostics->findChild<QCheckBox*>(u"csv"_s),
                        Qt::Key_Space); // too late for it
        m_platform->panels.confirm(m_folder->shownPath());
        QCOMPARE(shownText(*diagnostics), u"date,time,totalsize,filename,size,percent,process\n"_s);
        trigger(*diagnostics, u"infodiag"_s);
        m_platform->panels.confirm(m_folder->shownPath());
        QVERIFY(shownText(*diagnostics).startsWith(u"Unified log information.  "));

        const auto archive = newWindow(true);
        QTest::keyClick(archive->findChild<QCheckBox*>(u"debug"_s), Qt::Key_Space);
        trigger(*archive, u"analarch"_s);
        m_platform->panels.confirm(m_folder->shownPath());
        QVERIFY(shownText(*archive).startsWith(u"Analysis of "));
        trigger(*archive, u"copyarch"_s);
        m_platform->panels.confirm(m_folder->shownPath(u"db"_s));
        m_platform->panels.confirm(m_folder->shownPath(u"db.logarchive"_s));
        QVERIFY(shownText(*archive).contains(u"building export dictionary\n"));
    }

    void editsAreSaved()
    {
        m_folder->make("1.tracev3");
        const auto window = newWindow(false);
        trigger(*window, u"catdiag"_s);
        m_platform->panels.confirm(m_folder->shownPath());
        const QString catalogue = shownText(*window);
        output(*window)->moveCursor(QTextCursor::Start);
        QTest::keyClicks(output(*window), u"Note"_s);
        trigger(*window, u"savediag"_s);
        m_platform->panels.confirm(m_folder->shownPath(u"saved.txt"_s));
        QCOMPARE(QString::fromUtf8(m_folder->bytes("saved.txt")), u"Note"_s + catalogue);
    }

    void textFollowsTheTool()
    {
        const auto window = newWindow(false);
        QTest::keyClicks(output(*window), u"my own"_s);
        trigger(*window, u"infodiag"_s);
        QCOMPARE(shownText(*window), u"my own"_s);
        m_platform->panels.confirm(m_folder->shownPath());
        QVERIFY(shownText(*window).endsWith(u"Couldn't determine the oldest log entry.\n"));
        QVERIFY(!shownText(*window).contains(u"my own"));
    }

    void anyReportIsShownUnchanged()
    {
        m_folder->make("a\rb\xE2\x80\xA9.tracev3", "x");
        const auto window = newWindow(false);
        trigger(*window, u"catdiag"_s);
        m_platform->panels.confirm(m_folder->shownPath());
        trigger(*window, u"savediag"_s);
        m_platform->panels.confirm(m_folder->shownPath(u"saved.txt"_s));
        QVERIFY(m_folder->bytes("saved.txt").contains("/a\rb\xE2\x80\xA9.tracev3\t"));
    }

    void cursorShowsThatItWorks()
    {
        const auto window = newWindow(false);
        bool wasShown = false;
        m_files.fails = [&wasShown](const FilePath&) {
            const QCursor* cursor = QGuiApplication::overrideCursor();
            wasShown = cursor && cursor->shape() == Qt::WaitCursor;
            return false;
        };
        trigger(*window, u"infodiag"_s);
        QVERIFY(!QGuiApplication::overrideCursor());
        m_platform->panels.confirm(m_folder->shownPath());
        QVERIFY(wasShown);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void longReportsAreShownNowAndThen()
    {
        const auto window = newWindow(true);
        m_folder->make("db/uuidtext/00/AB");
        for (int number = 0; number < 200; ++number)
            m_folder->make("db/diagnostics/" + std::to_string(number));
        window->findChild<QCheckBox*>(u"debug"_s)->setChecked(true);
        trigger(*window, u"copyarch"_s);
        m_platform->panels.confirm(m_folder->shownPath(u"db"_s));
        const QSignalSpy changed(output(*window)->document(), &QTextDocument::contentsChanged);
        QElapsedTimer running;
        running.start();
        m_platform->panels.confirm(m_folder->shownPath(u"db.logarchive"_s));
        QVERIFY2(changed.count() <= 1 + running.elapsed() / 100,
                 qPrintable(QString::number(changed.count())));
        QVERIFY(shownText(*window).endsWith(u"Info.plist\n"));
    }

    void windowMayCloseBeforeItsPanel()
    {
        auto window = newWindow(false);
        QTest::keyClicks(output(*window), u"kept"_s);
        trigger(*window, u"savediag"_s);
        trigger(*window, u"catdiag"_s);
        window.reset();
        m_platform->panels.confirm(m_folder->shownPath(u"saved.txt"_s));
        m_platform->panels.confirm(m_folder->shownPath());
        QCOMPARE(m_folder->bytes("saved.txt"), "kept"_ba);
    }

private:
    std::unique_ptr<ToolView> newWindow(bool archive)
    {
        std::unique_ptr<ToolView> window;
        if (archive)
            window = std::make_unique<ArchiveView>(m_platform->platform, m_files);
        else
            window = std::make_unique<DiagnosticsView>(m_platform->platform, m_files);
        window->show();
        return window;
    }
    static QString shownText(const ToolView& window) { return output(window)->toPlainText(); }
    static QPlainTextEdit* output(const ToolView& window)
    {
        return window.findChild<QPlainTextEdit*>(u"theOutputText"_s);
    }
    static void trigger(const ToolView& window, const QString& identifier)
    {
        window.findChild<QAction*>(identifier)->trigger();
    }

    std::unique_ptr<LogFolder> m_folder;
    std::unique_ptr<FakePlatform> m_platform;
    FakeFileManager m_files;
};

TESSEL_TEST(TestToolViews)
#include "tst_toolviews.moc"
