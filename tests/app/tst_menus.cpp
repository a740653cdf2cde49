// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "model/entrylistfile.h"
#include "support/testcase.h"

#include <QAbstractItemView>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QWidgetAction>

using namespace Qt::StringLiterals;

namespace {

QString plain(QString text)
{
    return text.replace(u"&&"_s, u"\x01"_s).remove(u'&').replace(u'\x01', u'&');
}

QMenu* menu(const QWidget& window, const QString& title)
{
    for (const QAction* action : window.findChild<QMenuBar*>()->actions()) {
        if (plain(action->text()) == title)
            return action->menu();
    }
    return nullptr;
}

QStringList texts(const QMenu& menu)
{
    QStringList texts;
    for (const QAction* action : menu.actions())
        texts.append(action->isSeparator() ? u"-"_s : plain(action->text()));
    return texts;
}

/// All commands of a menu and its submenus.
QList<QAction*> commands(const QMenu& menu)
{
    QList<QAction*> found;
    for (QAction* action : menu.actions()) {
        if (action->menu())
            found.append(commands(*action->menu()));
        else if (!action->isSeparator())
            found.append(action);
    }
    return found;
}

QList<QAction*> menuCommands(const QWidget& window)
{
    QList<QAction*> found;
    if (const auto* bar = window.findChild<QMenuBar*>()) {
        for (const QAction* action : bar->actions())
            found.append(commands(*action->menu()));
    }
    return found;
}

/// The items that are seen together: those of the menu bar, and those of each of its menus.
QList<QList<QAction*>> menuLevels(const QWidget& window)
{
    const auto* bar = window.findChild<QMenuBar*>();
    if (!bar)
        return {};
    QList<QList<QAction*>> levels{bar->actions()};
    for (const QAction* action : bar->actions())
        levels.append(action->menu()->actions());
    return levels;
}

const QStringList singleWindowTitles{u"Help Window"_s, u"Diagnostics Tool"_s, u"Logarchive Tool"_s,
                                     u"Predicate Editor"_s, u"Gloss"_s};

} // namespace

class TestMenus : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setQuitOnLastWindowClosed(false); }

    void init()
    {
        TestCase::init();
        m_fixture = std::make_unique<AppFixture>();
        m_app = &m_fixture->start();
    }

    void cleanup() { m_fixture.reset(); }

    void menusStandInTheirOrder_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("titles");
        const QString tool = u"Tessel File View Window Help"_s;
        QTest::newRow("main window") << u"main"_s << u"Tessel File Edit View Window Help"_s;
        QTest::newRow("help") << u"help"_s << tool;
        QTest::newRow("diagnostics tool") << u"diagtool"_s << tool;
        QTest::newRow("logarchive tool") << u"logarchtool"_s << tool;
    }

    void menusStandInTheirOrder()
    {
        QFETCH(QString, identifier);
        const QWidget& window = m_fixture->opened(identifier);
        QStringList titles;
        for (const QAction* action : window.findChild<QMenuBar*>()->actions())
            titles.append(plain(action->text()));
        QTEST(titles.join(u' '), "titles");
        QCOMPARE(texts(*menu(window, u"Tessel"_s)),
                 QStringList({u"About Tessel"_s, u"About Qt"_s, u"-"_s, u"Settings…"_s, u"-"_s,
                              u"Quit"_s}));
        const QStringList file = texts(*menu(window, u"File"_s));
        QCOMPARE(file.first(), u"New Window"_s);
        QCOMPARE(file.last(), u"Close"_s);
        QCOMPARE(texts(*menu(window, u"Help"_s)), QStringList{u"Tessel Help"_s});
    }

    void windowMenuListsTheWindows()
    {
        QWidget& first = m_app->newWindow();
        QWidget& second = m_app->newWindow();
        first.setWindowTitle(u"Salt & pepper"_s);
        second.setWindowTitle(u"Another"_s);
        QMenu& list = *menu(second, u"Window"_s);
        for (int times = 0; times < 2; ++times) {
            Q_EMIT list.aboutToShow();
            QCOMPARE(texts(list),
                     singleWindowTitles + QStringList({u"-"_s, u"Salt & pepper"_s, u"Another"_s}));
        }
        QVERIFY(!list.actions().at(6)->isChecked());
        QVERIFY(list.actions().at(7)->isChecked());

        first.close();
        Q_EMIT list.aboutToShow();
        QCOMPARE(texts(list), singleWindowTitles + QStringList({u"-"_s, u"Another"_s}));
    }

    void windowMenuOpensEachWindow()
    {
        const QMenu& list = *menu(m_app->newWindow(), u"Window"_s);
        for (qsizetype i = 0; i < singleWindowTitles.size(); ++i) {
            list.actions().at(i)->trigger();
            QVERIFY2(AppFixture::window(singleWindowTitles.at(i)),
                     qPrintable(singleWindowTitles.at(i)));
        }
        QCOMPARE(AppFixture::windows().size(), 1 + singleWindowTitles.size());
    }

    void windowMenuBringsMainWindowsForward()
    {
        QWidget& first = m_app->newWindow();
        QWidget& second = m_app->newWindow();
        QTRY_VERIFY(second.isActiveWindow());
        QMenu& list = *menu(second, u"Window"_s);
        Q_EMIT list.aboutToShow();
        list.actions().at(6)->trigger();
        QTRY_VERIFY(first.isActiveWindow());
    }

    void helpCommandOpensOneWindow()
    {
        QWidget& window = m_app->newWindow();
        QTRY_VERIFY(window.isActiveWindow());
        QTest::keyClick(&window, Qt::Key_F1);
        QWidget* const help = AppFixture::window(u"Help Window"_s);
        QVERIFY(help);
        menu(window, u"Help"_s)->actions().constFirst()->trigger();
        QTRY_VERIFY(help->isActiveWindow());
        QCOMPARE(AppFixture::windows().size(), 2);
    }

    void keysWorkInWindowsWithoutMenus()
    {
        QWidget& gloss = m_fixture->opened(u"textView"_s);
        QTRY_VERIFY(gloss.isActiveWindow());
        QTest::keyClick(&gloss, Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(AppFixture::window(u"Settings"_s));
        gloss.activateWindow();
        QTRY_VERIFY(gloss.isActiveWindow());
        QTest::keyClick(&gloss, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(m_app->mainWindows().size(), 1);
    }

    void shiftF10OpensTheContextMenu()
    {
        const QWidget& window = m_app->newWindow();
        auto* const list = window.findChild<QAbstractItemView*>(u"entries"_s);
        QStringList offered;
        QTimer::singleShot(0, list, [&offered] {
            auto* const open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(open);
            offered = texts(*open);
            open->close();
        });
        list->setFocus();
        QTest::keyClick(list, Qt::Key_F10, Qt::ShiftModifier);
        QTRY_VERIFY2(offered.contains(u"Add Note"_s), qPrintable(offered.join(u' ')));
    }

    void closeClosesTheActiveWindow()
    {
        QWidget& first = m_app->newWindow();
        QWidget& second = m_app->newWindow();
        first.activateWindow();
        QTRY_VERIFY(first.isActiveWindow());
        QTest::keyClick(&first, Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(m_app->mainWindows(), QList<QWidget*>{&second});
    }

    void quitClosesEveryWindow()
    {
        QWidget& window = m_app->newWindow();
        m_app->newWindow();
        m_app->openSettings();
        QAction* const quit = menu(window, u"Tessel"_s)->actions().constLast();
        QTimer::singleShot(0, quit, &QAction::trigger);
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(AppFixture::windows().isEmpty());
    }

    void everyWindowsMenusAreSound_data()
    {
        QTest::addColumn<QString>("identifier");
        for (const char* identifier :
             {"main", "settings", "help", "diagtool", "logarchtool", "miniPredView", "textView"})
            QTest::newRow(identifier) << QString::fromLatin1(identifier);
    }

    void everyWindowsMenusAreSound()
    {
        QFETCH(QString, identifier);
        const QWidget& window = m_fixture->opened(identifier);
        const QList<QAction*> inMenus = menuCommands(window);
        for (const QToolBar* bar : window.findChildren<QToolBar*>()) {
            for (QAction* action : bar->actions()) {
                if (!qobject_cast<QWidgetAction*>(action))
                    QVERIFY2(inMenus.contains(action), qPrintable(action->text()));
            }
        }

        const QList<QAction*> all = inMenus + window.actions();
        QSet<QString> keys;
        for (const QAction* action : QSet<QAction*>(all.begin(), all.end())) {
            for (const QKeySequence& key : action->shortcuts()) {
                QVERIFY2(!keys.contains(key.toString()), qPrintable(key.toString()));
                keys.insert(key.toString());
            }
        }
        for (const QString& key : {u"Ctrl+N"_s, u"Ctrl+W"_s, u"Ctrl+Q"_s, u"Ctrl+,"_s, u"F1"_s})
            QVERIFY2(keys.contains(key), qPrintable(key));

        for (const QList<QAction*>& level : menuLevels(window)) {
            QSet<QString> seen;
            for (const QAction* action : level) {
                const QString mnemonic = QKeySequence::mnemonic(action->text()).toString();
                QVERIFY2(!seen.contains(mnemonic), qPrintable(action->text()));
                if (!mnemonic.isEmpty())
                    seen.insert(mnemonic);
                else if (!action->isSeparator() && identifier == u"main")
                    QFAIL(qPrintable(action->text()));
            }
        }
    }

    void recentFilesOpenAgain()
    {
        const QString list = m_fixture->path(u"salt & pepper.tessel"_s);
        QVERIFY(saveEntryList({LogEntry()}, list));
        const QString archive = m_fixture->path(u"mac.logarchive"_s);
        QVERIFY(QDir().mkdir(archive));
        m_app->open({{list, archive, m_fixture->path(u"nowhere.tessel"_s)}, {}});
        auto& window = *qobject_cast<ContentView*>(m_app->mainWindows().constFirst());
        QVERIFY(window.menus().file->actions().contains(
            window.findChild<QMenu*>(u"recentMenu"_s)->menuAction()));
        QMenu& recent = *window.findChild<QMenu*>(u"recentMenu"_s);
        Q_EMIT recent.aboutToShow();
        QCOMPARE(texts(recent), QStringList({u"mac.logarchive"_s, u"salt & pepper.tessel"_s, u"-"_s,
                                             u"Clear Menu"_s}));
        recent.actions().at(0)->trigger();
        QCOMPARE(window.state().logger().archURL().value_or(QUrl()), QUrl::fromLocalFile(archive));
        QVERIFY(QDir().rmdir(archive));
        Q_EMIT recent.aboutToShow();
        QVERIFY(!recent.actions().at(0)->isEnabled()); // its disk may come back
        QVERIFY(recent.actions().at(1)->isEnabled());
        recent.actions().constLast()->trigger();
        Q_EMIT recent.aboutToShow();
        QVERIFY(!recent.actions().constLast()->isEnabled());
        QCOMPARE(m_fixture->state.recentFiles(), QStringList());
    }

private:
    std::unique_ptr<AppFixture> m_fixture;
    TesselApp* m_app = nullptr;
};

TESSEL_TEST(TestMenus)
#include "tst_menus.moc"
