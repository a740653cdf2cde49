// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "support/testcase.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QSet>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

using namespace Qt::StringLiterals;

namespace {

/// All but the parts of other controls that the toolkit makes.
QList<QWidget*> controls(QWidget& window)
{
    QList<QWidget*> found;
    if (qobject_cast<QAbstractScrollArea*>(&window))
        found.append(&window);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() == &window && widget->isVisible()
            && !widget->objectName().startsWith("qt_"_L1) && widget->focusPolicy() != Qt::NoFocus)
            found.append(widget);
    }
    return found;
}

/// Of a button in a toolbar, its command's.
QString nameOf(const QWidget& control)
{
    if (const auto* button = qobject_cast<const QToolButton*>(&control);
        button && button->defaultAction())
        return button->defaultAction()->objectName();
    return control.objectName();
}

QString accessibleName(QWidget& control)
{
    const QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&control);
    return interface ? interface->text(QAccessible::Name).trimmed() : QString();
}

QString described(const QWidget& control)
{
    return QString::fromLatin1(control.metaObject()->className()) + u' ' + control.objectName()
           + u" in "_s + control.window()->windowTitle();
}

} // namespace

class TestAccessibility : public TestCase
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

    void everyControlHasItsNames_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<int>("atLeast");
        QTest::newRow("main window") << u"main"_s << 12;
        QTest::newRow("settings") << u"settings"_s << 7;
        QTest::newRow("predicates in the settings") << u"predicates"_s << 3;
        QTest::newRow("help") << u"help"_s << 1;
        QTest::newRow("diagnostics tool") << u"diagtool"_s << 2;
        QTest::newRow("logarchive tool") << u"logarchtool"_s << 3;
        QTest::newRow("predicate editor") << u"miniPredView"_s << 2;
        QTest::newRow("gloss") << u"textView"_s << 1;
        QTest::newRow("toolbar dialog") << u"toolbarDialog"_s << 5;
        QTest::newRow("about") << u"about"_s << 1;
    }

    void everyControlHasItsNames()
    {
        QFETCH(QString, identifier);
        QFETCH(int, atLeast);
        QWidget& window = opened(identifier);
        const QList<QWidget*> all = controls(window);
        QVERIFY2(all.size() >= atLeast, qPrintable(QString::number(all.size())));
        for (QWidget* control : all) {
            QVERIFY2(!nameOf(*control).isEmpty(), qPrintable(described(*control)));
            QVERIFY2(!accessibleName(*control).isEmpty(), qPrintable(described(*control)));
        }
        for (const QToolBar* bar : window.findChildren<QToolBar*>()) {
            for (const QAction* action : bar->actions())
                QVERIFY2(qobject_cast<const QWidgetAction*>(action)
                             || (!action->objectName().isEmpty() && !action->toolTip().isEmpty()),
                         qPrintable(action->text()));
        }
    }

    void tabReachesEveryControl_data() { everyControlHasItsNames_data(); }

    void tabReachesEveryControl()
    {
        QFETCH(QString, identifier);
        QWidget& window = opened(identifier);
        QTRY_VERIFY(window.isActiveWindow());
        QSet<QWidget*> wanted;
        for (QWidget* control : controls(window)) {
            if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus))
                wanted.insert(control);
        }
        const qsizetype presses = 2 * wanted.size() + 4;
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            QSet<QWidget*> missed = wanted;
            for (qsizetype i = 0; i < presses; ++i) {
                QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key);
                missed.remove(window.focusWidget());
            }
            for (const QWidget* control : missed)
                QFAIL(qPrintable(described(*control)));
        }
    }

private:
    /// A window or, with a row's name of its own, a dialog that a main window opens, or another tab
    /// of the settings.
    QWidget& opened(const QString& identifier)
    {
        if (identifier == u"predicates") {
            QWidget& settings = m_fixture->opened(u"settings"_s);
            qobject_cast<QTabWidget*>(&settings)->setCurrentIndex(1);
            return settings;
        }
        if (identifier != u"toolbarDialog" && identifier != u"about")
            return m_fixture->opened(identifier);
        QWidget& window = m_fixture->opened(u"main"_s);
        window.activateWindow();
        const QString command = identifier == u"about" ? identifier : u"customiseToolbar"_s;
        for (const QMenu* menu : window.findChildren<QMenu*>()) {
            for (QAction* action : menu->actions()) {
                if (action->objectName() == command)
                    action->trigger();
            }
        }
        return *QApplication::activeModalWidget();
    }

    std::unique_ptr<AppFixture> m_fixture;
    TesselApp* m_app = nullptr;
};

TESSEL_TEST(TestAccessibility)
#include "tst_accessibility.moc"
