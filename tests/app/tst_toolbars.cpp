// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "app/toolbararrangement.h"
#include "app/toolbarcustomisation.h"
#include "support/testcase.h"

#include <QComboBox>
#include <QDialog>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

ToolBarArrangement arrangement(const QStringList& identifiers)
{
    ToolBarArrangement arrangement;
    for (const QString& identifier : identifiers)
        arrangement.items.append({identifier, true});
    return arrangement;
}

QStringList shownItems(const QWidget& window)
{
    QStringList shown;
    for (const QAction* action : window.findChild<QToolBar*>()->actions())
        shown.append(action->objectName());
    return shown;
}

const QStringList mainItems = u"getlog setarch readlog note gloss reduce savejson savertf "
                              "setsearch"_s.split(u' ');

} // namespace

class TestToolBars : public TestCase
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

    void storedFormsAreRead_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("order");
        const auto row = [](const char* name, const QByteArray& stored, const char* order) {
            QTest::newRow(name) << stored << QString::fromLatin1(order);
        };
        row("nothing", "", "a b c");
        row("damaged", "{\"items\":[{\"item\":\"c\"", "a b c");
        row("of other types", R"({"items":[1,"c",null,{"item":2}],"style":[]})", "a b c");
        row("an unknown item", R"({"items":[{"item":"x"},{"item":"c"}]})", "c a b");
        row("an item twice", R"({"items":[{"item":"b"},{"item":"b"}]})", "b a c");
        row("without a new item", R"({"items":[{"item":"b"},{"item":"a"}]})", "b a c");
        row("an unknown style", R"({"items":[],"style":"huge"})", "a b c");
    }

    void storedFormsAreRead()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, order);
        const ToolBarArrangement original = arrangement({u"a"_s, u"b"_s, u"c"_s});
        QVERIFY(ToolBarArrangement::fromBytes(stored, original) == arrangement(order.split(u' ')));
    }

    void dialogArranges()
    {
        const QWidget& window = m_app->newWindow();
        QCOMPARE(shownItems(window), mainItems);
        QDialog* const open = dialog(window);
        auto* const list = open->findChild<QListWidget*>();
        QCOMPARE(list->count(), mainItems.size());
        QCOMPARE(list->item(1)->text(), u"Use Logarchive"_s);

        list->setCurrentRow(1);
        QTest::mouseClick(open->findChild<QPushButton*>(u"moveUp"_s), Qt::LeftButton);
        QCOMPARE(shownItems(window).mid(0, 3),
                 QStringList({u"setarch"_s, u"getlog"_s, u"readlog"_s}));
        QCOMPARE(list->currentRow(), 0);
        QVERIFY(!open->findChild<QPushButton*>(u"moveUp"_s)->isEnabled());
        QTest::mouseClick(open->findChild<QPushButton*>(u"moveDown"_s), Qt::LeftButton);
        QCOMPARE(shownItems(window), mainItems);

        list->setCurrentRow(2);
        QTest::keyClick(list, Qt::Key_Space);
        QVERIFY(!shownItems(window).contains(u"readlog"_s));
        auto* const style = open->findChild<QComboBox*>();
        style->setCurrentIndex(style->findText(u"Text Only"_s));
        QCOMPARE(window.findChild<QToolBar*>()->toolButtonStyle(), Qt::ToolButtonTextOnly);
    }

    void dialogMovesByDragging()
    {
        const QWidget& window = m_app->newWindow();
        auto* const list = dialog(window)->findChild<QListWidget*>();
        // What a drop within the list does.
        QVERIFY(list->model()->moveRow({}, 0, {}, 3));
        QCOMPARE(shownItems(window).mid(0, 3),
                 QStringList({u"setarch"_s, u"readlog"_s, u"getlog"_s}));
    }

    void dialogRestores()
    {
        const QWidget& window = m_app->newWindow();
        customisation(window).arrange(arrangement({u"reduce"_s, u"getlog"_s}));
        QCOMPARE(shownItems(window), QStringList({u"reduce"_s, u"getlog"_s}));
        QTest::mouseClick(dialog(window)->findChild<QPushButton*>(u"restoreToolbar"_s),
                          Qt::LeftButton);
        QCOMPARE(shownItems(window), mainItems);
    }

    void contextMenuSetsTheStyle()
    {
        const QWidget& window = m_app->newWindow();
        contextMenuItem(window, u"Icons Only"_s)->trigger();
        QCOMPARE(window.findChild<QToolBar*>()->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QCOMPARE(shownItems(window), mainItems);
    }

    void arrangementIsKept_data()
    {
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<Qt::ToolButtonStyle>("style");
        QTest::newRow("main window")
            << u"main"_s << u"ContentView.toolbar"_s << Qt::ToolButtonTextOnly;
        QTest::newRow("diagnostics tool")
            << u"diagtool"_s << u"DiagnosticsView.toolbar"_s << Qt::ToolButtonIconOnly;
        QTest::newRow("logarchive tool")
            << u"logarchtool"_s << u"ArchiveView.toolbar"_s << Qt::ToolButtonTextUnderIcon;
    }

    void arrangementIsKept()
    {
        QFETCH(QString, window);
        QFETCH(QString, identifier);
        QFETCH(Qt::ToolButtonStyle, style);
        QWidget* const first = &m_fixture->opened(window);
        ToolBarArrangement changed = customisation(*first).arrangement();
        std::reverse(changed.items.begin(), changed.items.end());
        changed.items[1].shown = false;
        changed.style = style;
        customisation(*first).arrange(changed);
        const QStringList shown = shownItems(*first);
        QVERIFY(!m_fixture->state.arrangement(identifier).isEmpty());

        first->close();
        AppFixture::runDeletions();
        m_fixture->start();
        const QWidget& second = m_fixture->opened(window);
        QCOMPARE(shownItems(second), shown);
        QVERIFY(customisation(second).arrangement() == changed);
    }

    void hiddenToolbarStaysHidden()
    {
        const QWidget& first = m_app->newWindow();
        const QWidget& second = m_app->newWindow();
        first.findChild<QToolBar*>()->toggleViewAction()->trigger();
        QVERIFY(!first.findChild<QToolBar*>()->isVisible());
        QVERIFY(!second.findChild<QToolBar*>()->isVisible());
        m_app = &m_fixture->start();
        const QWidget& third = m_app->newWindow();
        const auto* const bar = third.findChild<QToolBar*>();
        QVERIFY(!bar->isVisible());
        QVERIFY(!bar->toggleViewAction()->isChecked());
        bar->toggleViewAction()->trigger();
        QVERIFY(bar->isVisible());
        QVERIFY(m_app->newWindow().findChild<QToolBar*>()->isVisible());
    }

    void otherWindowsFollow()
    {
        const QWidget& first = m_app->newWindow();
        const QWidget& second = m_app->newWindow();
        m_app->openWindow(u"diagtool"_s);
        const QStringList tool = shownItems(*AppFixture::window(u"Diagnostics Tool"_s));
        contextMenuItem(first, u"Gloss"_s)->trigger();
        QVERIFY(!shownItems(first).contains(u"gloss"_s));
        QVERIFY(!shownItems(second).contains(u"gloss"_s));
        QCOMPARE(shownItems(*AppFixture::window(u"Diagnostics Tool"_s)), tool);
    }

    void pickerSurvivesBeingHidden()
    {
        ContentView& window = m_app->newWindow();
        QAction* const item = contextMenuItem(window, u"Search Field"_s);
        item->trigger();
        QVERIFY(!window.findChild<QComboBox*>(u"searchType"_s));
        item->trigger();
        QCOMPARE(shownItems(window), mainItems);
        auto* const picker = window.findChild<QComboBox*>(u"searchType"_s);
        QVERIFY(picker);
        QTRY_VERIFY(picker->isVisible());
        picker->setCurrentIndex(2);
        QCOMPARE(window.state().searchTypeIndex.value(), 2);
    }

private:
    static ToolBarCustomisation& customisation(const QWidget& window)
    {
        return *window.findChild<ToolBarCustomisation*>();
    }
    static QDialog* dialog(const QWidget& window)
    {
        customisation(window).customise()->trigger();
        return window.findChild<QDialog*>(u"toolbarDialog"_s);
    }

    static QAction* contextMenuItem(const QWidget& window, const QString& text)
    {
        auto* const bar = window.findChild<QToolBar*>();
        Q_EMIT bar->customContextMenuRequested(QPoint(1, 1));
        for (const QMenu* menu : bar->findChildren<QMenu*>()) {
            for (QAction* action : menu->actions()) {
                if (action->text().remove(u'&') == text)
                    return action;
            }
        }
        return nullptr;
    }

    std::unique_ptr<AppFixture> m_fixture;
    TesselApp* m_app = nullptr;
};

TESSEL_TEST(TestToolBars)
#include "tst_toolbars.moc"
