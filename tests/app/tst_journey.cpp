// SPDX-License-Identifier: MIT
#include "app/appfixture.h"
#include "platform/demonstrationstore.h"
#include "support/testcase.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// The processes of the entries that the window fetches with the predicate of this name.
QSet<QString> processesFetched(ContentView& window, const QString& predicate)
{
    window.findChild<QComboBox*>(u"predIndex"_s)->setCurrentText(predicate);
    window.commands().getLog->trigger();
    QSet<QString> processes;
    for (const LogEntry& entry : window.state().logger().logList())
        processes.insert(entry.process.toString());
    return processes;
}

} // namespace

/// The windows together, as a user goes from one to the next.
class TestJourney : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void whatTheUserMakesIsFoundAgain()
    {
        TestCase::init();
        const qint64 now = m_fixture.platform.clock.currentTime.toMSecsSinceEpoch() * 1'000'000;
        const QString store = m_fixture.path(u"demonstration"_s);
        QVERIFY(DemonstrationStore(store.toStdString()).writeUntil(now));
        m_fixture.platform.logStores.localPath = store;
        TesselApp& app = m_fixture.start();
        QVERIFY(processesFetched(app.newWindow(), u"none"_s).size() > 3);

        app.openSettings();
        auto* const settings = qobject_cast<QTabWidget*>(AppFixture::window(u"Settings"_s));
        settings->setCurrentIndex(1);
        QTest::keyClicks(settings->findChild<QTextEdit*>(u"predicateText"_s),
                         u"process == \"kernel\""_s);
        QTest::keyClicks(settings->findChild<QLineEdit*>(u"predicateName"_s), u"Core"_s);
        QTest::mouseClick(settings->findChild<QPushButton*>(u"append"_s), Qt::LeftButton);
        ContentView& window = app.newWindow();
        QCOMPARE(processesFetched(window, u"Core"_s), QSet{u"kernel"_s});

        auto* const set = window.findChild<QPushButton*>(u"setPredicate"_s);
        QTest::mouseClick(set, Qt::LeftButton);
        QTest::mouseClick(set, Qt::LeftButton);
        QCOMPARE(AppFixture::windows().size(), 4);
        const QWidget& editor = *AppFixture::window(u"Predicate Editor"_s);
        QTest::sendKeyEvent(QTest::Click, editor.findChild<QTextEdit*>(u"specPred"_s),
                            Qt::Key_unknown, u"process != “kernel”"_s, Qt::NoModifier);
        QTest::mouseClick(editor.findChild<QPushButton*>(u"save"_s), Qt::LeftButton);
        const QString special = window.findChild<QComboBox*>(u"predIndex"_s)->itemText(5);
        const QSet<QString> others = processesFetched(window, special);
        QVERIFY(others.size() > 2 && !others.contains(u"kernel"_s));

        window.selectAll();
        window.commands().gloss->trigger();
        auto* const gloss = qobject_cast<QPlainTextEdit*>(AppFixture::window(u"Gloss"_s));
        QTest::keyClicks(gloss, u"Look: "_s);
        const QString glossed = gloss->toPlainText();
        QVERIFY(glossed.startsWith(u"Look: "_s) && glossed.size() > 100);

        m_fixture.end(); // which saves what its windows hold
        UserDefaults defaults(m_fixture.path(u"preferences.ini"_s));
        const Platform& fake = m_fixture.platform.platform;
        TesselApp again(m_fixture.surroundings(
            {fake.panels, fake.alerts, defaults, fake.logStores, fake.processes, fake.clock}));
        QCOMPARE(processesFetched(again.newWindow(), u"Core"_s), QSet{u"kernel"_s});
        QCOMPARE(processesFetched(again.newWindow(), special), others);
        again.openWindow(u"textView"_s);
        QCOMPARE(qobject_cast<QPlainTextEdit*>(AppFixture::window(u"Gloss"_s))->toPlainText(),
                 glossed);
        QVERIFY(m_fixture.platform.alerts.shown.isEmpty());
    }

private:
    AppFixture m_fixture;
};

TESSEL_TEST(TestJourney)
#include "tst_journey.moc"
