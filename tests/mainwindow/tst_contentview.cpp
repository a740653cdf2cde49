// SPDX-License-Identifier: MIT
#include "support/sampleentries.h"
#include "support/smallstore.h"
#include "support/testcase.h"
#include "windowfixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

/// The main window's controls: what is there, where it stands and what it is bound to.
class TestContentView : public TestCase, private WindowFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        openWindow();
    }

    void cleanup() { closeWindow(); }

    void toolbarHoldsTheCommands()
    {
        const QList<QAction*> actions = find<QToolBar>(u"ContentView.toolbar"_s)->actions();
        const QStringList expected{
            u"getlog|Get Log|Load log entries|Ctrl+G"_s,
            u"setarch|Use Logarchive|Use Logarchive as log source|"_s,
            u"readlog|Read JSON|Read log from JSON file|Ctrl+O"_s,
            u"note|Add Note|Add note to selected entries.|"_s,
            u"gloss|Gloss|Show gloss editor|"_s,
            u"reduce|Reduce|Reduce log entries to search results|"_s,
            u"savejson|Save JSON|Save log entries in JSON file|Ctrl+S"_s,
            u"savertf|Save RTF|Save log entries as Rich Text|"_s,
            u"setsearch|🔍|Set search field|"_s,
        };
        QStringList found;
        for (const QAction* action : actions) {
            found.append(QStringList{action->objectName(), action->iconText(), action->toolTip(),
                                     action->shortcut().toString()}
                             .join(u'|'));
            QVERIFY2(!action->icon().pixmap(24).isNull(), qPrintable(action->objectName()));
        }
        QCOMPARE(found, expected);
        const auto* const picker = find<QComboBox>(u"searchType"_s);
        QCOMPARE(picker->count(), 5);
        QCOMPARE(picker->itemText(4), u"Notes"_s);
    }

    void fieldsHaveTheirWidths_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("width");
        QTest::addRow("seconds") << u"seconds"_s << 48;
        QTest::addRow("period") << u"period"_s << 200;
        QTest::addRow("maximum") << u"maxCount"_s << 150;
        QTest::addRow("predicate picker") << u"predIndex"_s << 200;
        QTest::addRow("predicate") << u"predicate"_s << 300;
        QTest::addRow("note") << u"note"_s << 300;
        QTest::addRow("search field picker") << u"searchType"_s << 120;
    }

    void fieldsHaveTheirWidths()
    {
        QFETCH(QString, name);
        QFETCH(int, width);
        QCOMPARE(find<QWidget>(name)->width(), width);
        QVERIFY(find<QWidget>(name)->isVisible());
    }

    void everyToolbarCommandIsInAMenu()
    {
        const ContentMenus& menus = m_window->menus();
        QList<QAction*> inMenus;
        for (const QMenu* menu : {menus.file, menus.edit, menus.view})
            inMenus += menu->actions();
        for (QAction* action : find<QToolBar>(u"ContentView.toolbar"_s)->actions()) {
            if (action->objectName() != u"setsearch"_s)
                QVERIFY2(inMenus.contains(action), qPrintable(action->objectName()));
        }
        for (QAction* action :
             {m_window->commands().copy, m_window->commands().selectAll, m_window->commands().find})
            QVERIFY(inMenus.contains(action));
    }

    void typingReachesTheState()
    {
        ContentState& state = m_window->state();
        type(u"seconds"_s, u"42"_s);
        type(u"period"_s, u"0x10"_s);
        type(u"maxCount"_s, u"7"_s);
        type(u"predicate"_s, u"com.example"_s);
        type(u"note"_s, u"check"_s);
        QCOMPARE(state.theSecs.value(), u"42"_s);
        QCOMPARE(state.period.value(), u"0x10"_s);
        QCOMPARE(state.maxCount.value(), u"7"_s);
        QCOMPARE(state.predicate.value(), u"com.example"_s);
        QCOMPARE(state.userNoteText.value(), u"check"_s);
        QTest::mouseClick(find<QCheckBox>(u"showSignposts"_s), Qt::LeftButton, {}, {8, 10});
        QVERIFY(state.showSignposts);

        const QDateTime start(QDate(2024, 2, 29), QTime(23, 59));
        find<QDateTimeEdit>(u"start"_s)->setDateTime(start);
        QCOMPARE(state.theStartDate.value(), start);
        state.period = u"9"_s;
        QCOMPARE(find<QLineEdit>(u"period"_s)->text(), u"9"_s);
    }

    void pickerOffersTheLibrary()
    {
        auto* const picker = find<QComboBox>(u"predIndex"_s);
        QCOMPARE(picker->count(), 11);
        QCOMPARE(picker->currentText(), u"none"_s);
        picker->setFocus();
        QTest::keyClick(picker, Qt::Key_Down);
        QCOMPARE(m_window->state().predIndex.value(), 1);
        QCOMPARE(picker->currentText(), u"subsystem ➤➤"_s);
    }

    void missingNamesLeaveRowsEmpty()
    {
        m_window->state().predNames = QStringList{u"only"_s};
        const auto* const picker = find<QComboBox>(u"predIndex"_s);
        QCOMPARE(picker->count(), 11);
        QCOMPARE(picker->itemText(0), u"only"_s);
        QCOMPARE(picker->itemText(10), QString());
    }

    void rowsWrapInANarrowWindow()
    {
        QCOMPARE(m_window->minimumSize(), QSize(1150, 200));
        m_window->resize(2000, 600);
        const auto* const full = find<QCheckBox>(u"fullMode"_s);
        const auto* const start = find<QDateTimeEdit>(u"start"_s);
        const auto lineOf = [this](const QWidget* widget) {
            return widget->mapTo(m_window.get(), widget->rect().center()).y();
        };
        QTRY_VERIFY(qAbs(lineOf(full) - lineOf(start)) <= 1);
        m_window->state().logger().useArchive(QUrl::fromLocalFile(u"/a.logarchive"_s));
        QFont large = m_window->font();
        large.setPointSizeF(large.pointSizeF() * 1.5);
        m_window->setFont(large);
        m_window->resize(1150, 600);
        QTRY_VERIFY(lineOf(full) > lineOf(start) + 10);
        for (const QString& name : {u"fullMode"_s, u"note"_s, u"maxCount"_s}) {
            const auto* const control = find<QWidget>(name);
            QVERIFY2(m_window->rect().contains(
                         QRect(control->mapTo(m_window.get(), QPoint()), control->size())),
                     qPrintable(name));
        }
    }

    void lineTellsWhatCouldNotBeRead()
    {
        const auto* const line = find<QLabel>(u"statusLine"_s);
        QCOMPARE(line->text(), QString());
        const int height = line->height();
        QVERIFY(height >= line->fontMetrics().height());
        SmallStore store(0);
        store.log(1, "text");
        const QString path = m_fake->folder.filePath(u"a&b.logarchive"_s);
        QVERIFY(store.write(path));
        QVERIFY(QDir(path).mkpath(u"Special/0000000000000002.tracev3"_s));
        m_window->state().openDocument(path);
        QVERIFY(line->text().startsWith(u"1 of 3 file(s) could not be read. <a"_s));
        QCOMPARE(line->accessibleName(), u"1 of 3 file(s) could not be read."_s);
        QCOMPARE(line->height(), height);

        Q_EMIT find<QLabel>(u"statusLine"_s)->linkActivated(u"#"_s);
        QVERIFY(find<QDialog>(u"sourceReport"_s)->isVisible());
        QVERIFY(find<QPlainTextEdit>(u"sourceReportText"_s)
                    ->toPlainText()
                    .contains(u"Special/0000000000000002.tracev3: it is not a file"_s));

        QVERIFY(QDir(path).removeRecursively());
        m_window->state().getLog();
        QVERIFY(line->text().contains(u"a&amp;b.logarchive”"_s));
        m_window->resize(1150, 200);
        QTRY_COMPARE(line->isHidden(), true);
        QVERIFY(find<QLabel>(u"searchSummary"_s)->text().contains(u"a&b.logarchive”"_s));
    }

    void tabGoesRoundTheWindow()
    {
        m_window->state().logger().setLogList(sampleEntries());
        const QStringList order{
            u"searchType"_s,    u"start"_s,    u"seconds"_s,      u"period"_s,    u"maxCount"_s,
            u"showSignposts"_s, u"fullMode"_s, u"setPredicate"_s, u"predIndex"_s, u"predicate"_s,
            u"note"_s,          u"search"_s,   u"entries"_s};
        find<QComboBox>(order.first())->setFocus();
        QStringList visited;
        do {
            if (visited.isEmpty() || visited.last() != m_window->focusWidget()->objectName())
                visited.append(m_window->focusWidget()->objectName());
            QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
        } while (m_window->focusWidget()->objectName() != order.first() && visited.size() < 40);
        QCOMPARE(visited, order);
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Backtab);
        QCOMPARE(m_window->focusWidget()->objectName(), order.last());
    }

    void archiveIsShownInRed()
    {
        const auto* const label = find<QLabel>(u"usingArchive"_s);
        QVERIFY(!label->isVisible());
        clickTool(u"setarch"_s);
        m_fake->panels.confirm(u"/logs/mac.logarchive"_s);
        QVERIFY(label->isVisible());
        QCOMPARE(label->text(), u"‼️ Logarchive"_s);
        QCOMPARE(label->toolTip(), u"/logs/mac.logarchive"_s);
        const QColor colour = label->palette().color(QPalette::WindowText);
        QVERIFY(colour.red() > colour.green() + 80 && colour.red() > colour.blue() + 80);
        QPalette other;
        const bool wasDark = other.color(QPalette::Base).lightness() < 128;
        other.setColor(QPalette::Base, wasDark ? Qt::white : Qt::black);
        m_window->setPalette(other);
        QVERIFY(label->palette().color(QPalette::WindowText) != colour);
        clickTool(u"setarch"_s);
        m_fake->panels.cancel();
        QVERIFY(!label->isVisible());
    }

    void fullFieldsFollowToggleAndMenu()
    {
        m_window->state().logger().setLogList({sampleLogMessage()});
        QVERIFY(!line(0).contains(u"log message"_s));
        QTest::mouseClick(find<QCheckBox>(u"fullMode"_s), Qt::LeftButton, {}, {8, 10});
        QVERIFY(line(0).contains(u"log message"_s));
        QVERIFY(m_window->commands().fullFields->isChecked());
        m_window->commands().fullFields->trigger();
        QVERIFY(!find<QCheckBox>(u"fullMode"_s)->isChecked());
        QVERIFY(!line(0).contains(u"log message"_s));
        QVERIFY(!m_fake->defaults.boolean(u"fullMode"_s));
    }
};

TESSEL_TEST(TestContentView)
#include "tst_contentview.moc"
