// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "support/warnings.h"

#include <QAccessible>
#include <QAction>
#include <QSet>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

using namespace Qt::StringLiterals;

namespace {

/// All but the parts of other controls that the toolkit makes.
QList<QWidget*> controls(const QWidget& window)
{
    QList<QWidget*> found;
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

class tst_Accessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setQuitOnLastWindowClosed(false); }
    void init();
    void cleanup() { m_fixture.reset(); }
    void everyControlHasItsNames_data();
    void everyControlHasItsNames();
    void tabReachesEveryControl_data();
    void tabReachesEveryControl();
    void toolbarCommandsHaveTheirNames_data();
    void toolbarCommandsHaveTheirNames();

private:
    QWidget& opened(const QString& identifier);

    std::unique_ptr<AppFixture> m_fixture;
    TesselApp* m_app = nullptr;
};

void tst_Accessibility::init()
{
    failOnWarnings();
    m_fixture = std::make_unique<AppFixture>();
    m_app = &m_fixture->start();
}

QWidget& tst_Accessibility::opened(const QString& identifier)
{
    if (identifier == u"main")
        m_app->newWindow();
    else if (identifier == u"settings")
        m_app->openSettings();
    else
        m_app->openWindow(identifier);
    return *AppFixture::windows().constFirst();
}

void tst_Accessibility::everyControlHasItsNames_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<int>("atLeast");
    QTest::newRow("main window") << u"main"_s << 12;
    QTest::newRow("settings") << u"settings"_s << 7;
    QTest::newRow("help") << u"help"_s << 1;
    QTest::newRow("diagnostics tool") << u"diagtool"_s << 2;
    QTest::newRow("logarchive tool") << u"logarchtool"_s << 3;
    QTest::newRow("predicate editor") << u"miniPredView"_s << 2;
}

void tst_Accessibility::everyControlHasItsNames()
{
    QFETCH(QString, identifier);
    QFETCH(int, atLeast);
    const QWidget& window = opened(identifier);
    const QList<QWidget*> all = controls(window);
    QVERIFY2(all.size() >= atLeast, qPrintable(QString::number(all.size())));
    for (QWidget* control : all) {
        QVERIFY2(!nameOf(*control).isEmpty(), qPrintable(described(*control)));
        QVERIFY2(!accessibleName(*control).isEmpty(), qPrintable(described(*control)));
    }
}

void tst_Accessibility::tabReachesEveryControl_data()
{
    everyControlHasItsNames_data();
}

void tst_Accessibility::tabReachesEveryControl()
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

void tst_Accessibility::toolbarCommandsHaveTheirNames_data()
{
    everyControlHasItsNames_data();
}

void tst_Accessibility::toolbarCommandsHaveTheirNames()
{
    QFETCH(QString, identifier);
    for (const QToolBar* bar : opened(identifier).findChildren<QToolBar*>()) {
        for (const QAction* action : bar->actions()) {
            if (qobject_cast<const QWidgetAction*>(action))
                continue;
            QVERIFY2(!action->objectName().isEmpty(), qPrintable(action->text()));
            QVERIFY2(!action->toolTip().isEmpty(), qPrintable(action->text()));
        }
    }
}

QTEST_MAIN(tst_Accessibility)
#include "tst_accessibility.moc"
