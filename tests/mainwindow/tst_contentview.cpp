// SPDX-License-Identifier: MIT
#include "mainwindow/contentview.h"
#include "mainwindow/entrylistview.h"
#include "model/entrylistfile.h"
#include "platform/demonstrationstore.h"
#include "platform/logstore/entryfilter.h"
#include "support/fakeplatform.h"
#include "support/sampleentries.h"
#include "support/warnings.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

/// The main window through its widgets: typed at, clicked on and looked at.
class TestContentView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void toolbarHoldsTheCommands();
    void fieldsHaveTheirWidths_data();
    void fieldsHaveTheirWidths();
    void everyControlIsNamed();
    void everyToolbarCommandIsInAMenu();
    void menuKeysAreUnambiguous();
    void typingReachesTheState();
    void pickerOffersTheLibrary();
    void missingNamesLeaveRowsEmpty();
    void rowsWrapInANarrowWindow();
    void tabGoesRoundTheWindow();
    void archiveIsShownInRed();
    void commandsWithNothingToActOnAreDisabled();
    void setAndGlossOpenTheirWindows();
    void searchFromTheKeyboard();
    void escapeEndsTheSearch();
    void emptyResultShowsThePlaceholder();
    void copyPutsLinesOnTheClipboard();
    void copyInAFieldCopiesItsText();
    void fullFieldsFollowToggleAndMenu();
    void drops_data();
    void drops();
    void journey();

private:
    std::unique_ptr<ContentView> makeWindow();
    template <typename Widget>
    Widget* find(const QString& name) const
    {
        auto* const widget = m_window->findChild<Widget*>(name);
        if (widget == nullptr)
            qFatal("no widget named %s", qPrintable(name));
        return widget;
    }
    QAbstractItemModel& rows() const { return *find<EntryListView>(u"entries"_s)->model(); }
    void clickTool(const QString& identifier);
    void clickRow(int row);
    void type(const QString& field, const QString& text);
    void useDemonstration();
    bool drop(const QUrl& url);

    std::unique_ptr<FakePlatform> m_fake;
    std::unique_ptr<ContentView> m_window;
    QStringList m_openedWindows;
};

void TestContentView::init()
{
    failOnWarnings();
    m_fake = std::make_unique<FakePlatform>();
    m_openedWindows.clear();
    m_window = makeWindow();
}

void TestContentView::cleanup()
{
    m_window.reset();
    m_fake.reset();
}

std::unique_ptr<ContentView> TestContentView::makeWindow()
{
    auto window = std::make_unique<ContentView>(
        m_fake->platform, [this](const QString& id) { m_openedWindows.append(id); },
        [](const PredicateFormat&) -> Result<std::shared_ptr<const logstore::EntryFilter>> {
            return nullptr;
        });
    window->show();
    if (!QTest::qWaitForWindowActive(window.get()))
        qFatal("the window did not become active");
    return window;
}

void TestContentView::clickTool(const QString& identifier)
{
    const auto* const bar = find<QToolBar>(u"ContentView.toolbar"_s);
    for (QAction* action : bar->actions()) {
        if (action->objectName() == identifier)
            return QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
    }
    QFAIL(qPrintable(u"no command "_s + identifier));
}

void TestContentView::clickRow(int row)
{
    auto* const list = find<EntryListView>(u"entries"_s);
    const QRect rect = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(20, rect.center().y()));
}

void TestContentView::type(const QString& field, const QString& text)
{
    auto* const edit = find<QLineEdit>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

void TestContentView::useDemonstration()
{
    const QString root = m_fake->folder.filePath(u"store"_s);
    const qint64 now = m_fake->clock.currentTime.toMSecsSinceEpoch() * 1'000'000;
    QVERIFY(writeDemonstrationStore(root.toStdString(), now));
    m_fake->logStores.localPath = root;
}

bool TestContentView::drop(const QUrl& url)
{
    QMimeData data;
    data.setUrls({url});
    QDragEnterEvent enter({50, 300}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.setAccepted(false);
    QApplication::sendEvent(m_window.get(), &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent event(QPointF(50, 300), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &event);
    return true;
}

void TestContentView::toolbarHoldsTheCommands()
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

void TestContentView::fieldsHaveTheirWidths_data()
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

void TestContentView::fieldsHaveTheirWidths()
{
    QFETCH(QString, name);
    QFETCH(int, width);
    QCOMPARE(find<QWidget>(name)->width(), width);
    QVERIFY(find<QWidget>(name)->isVisible());
}

void TestContentView::everyControlIsNamed()
{
    for (const QWidget* widget : m_window->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QLineEdit*>(widget)
                               || qobject_cast<const QAbstractButton*>(widget)
                               || qobject_cast<const QComboBox*>(widget)
                               || qobject_cast<const QAbstractItemView*>(widget);
        // Parts of the toolkit's own controls carry its own names.
        if (!isControl || !widget->isVisible() || qobject_cast<const QToolButton*>(widget)
            || widget->objectName().startsWith(u"qt_"_s))
            continue;
        if (widget->parent()->inherits("QComboBoxPrivateContainer"))
            continue;
        QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
    for (const QLabel* label : m_window->findChildren<QLabel*>()) {
        if (label->text() == u"Start"_s || label->text() == u":"_s)
            QVERIFY(label->buddy() != nullptr);
    }
}

void TestContentView::everyToolbarCommandIsInAMenu()
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

void TestContentView::menuKeysAreUnambiguous()
{
    const ContentMenus& menus = m_window->menus();
    QStringList shortcuts;
    for (const QMenu* menu : {menus.file, menus.edit, menus.view}) {
        QStringList mnemonics;
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            const QString mnemonic = QKeySequence::mnemonic(action->text()).toString();
            QVERIFY2(!mnemonic.isEmpty() && !mnemonics.contains(mnemonic),
                     qPrintable(action->text()));
            mnemonics.append(mnemonic);
            if (action->shortcut().isEmpty())
                continue;
            QVERIFY2(!shortcuts.contains(action->shortcut().toString()),
                     qPrintable(action->text()));
            shortcuts.append(action->shortcut().toString());
        }
    }
}

void TestContentView::typingReachesTheState()
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

void TestContentView::pickerOffersTheLibrary()
{
    auto* const picker = find<QComboBox>(u"predIndex"_s);
    QCOMPARE(picker->count(), 11);
    QCOMPARE(picker->currentText(), u"none"_s);
    picker->setFocus();
    QTest::keyClick(picker, Qt::Key_Down);
    QCOMPARE(m_window->state().predIndex.value(), 1);
    QCOMPARE(picker->currentText(), u"subsystem ➤➤"_s);
}

void TestContentView::missingNamesLeaveRowsEmpty()
{
    m_window->state().predNames = QStringList{u"only"_s};
    const auto* const picker = find<QComboBox>(u"predIndex"_s);
    QCOMPARE(picker->count(), 11);
    QCOMPARE(picker->itemText(0), u"only"_s);
    QCOMPARE(picker->itemText(10), QString());
}

void TestContentView::rowsWrapInANarrowWindow()
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

void TestContentView::tabGoesRoundTheWindow()
{
    m_window->state().logger().setLogList(sampleEntries());
    const QStringList order{u"searchType"_s, u"start"_s,         u"seconds"_s,  u"period"_s,
                            u"maxCount"_s,   u"showSignposts"_s, u"fullMode"_s, u"setPredicate"_s,
                            u"predIndex"_s,  u"predicate"_s,     u"note"_s,     u"search"_s,
                            u"entries"_s};
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

void TestContentView::archiveIsShownInRed()
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
    clickTool(u"setarch"_s);
    m_fake->panels.cancel();
    QVERIFY(!label->isVisible());
}

void TestContentView::commandsWithNothingToActOnAreDisabled()
{
    const ContentActions& commands = m_window->commands();
    const auto enabled = [&commands] {
        QStringList names;
        for (const QAction* action : {commands.addNote, commands.gloss, commands.reduce,
                                      commands.saveJSON, commands.saveRTF}) {
            if (action->isEnabled())
                names.append(action->objectName());
        }
        return names;
    };
    QCOMPARE(enabled(), QStringList());
    m_window->state().logger().setLogList(sampleEntries());
    QCOMPARE(enabled(), (QStringList{u"savejson"_s, u"savertf"_s}));
    clickRow(0);
    QCOMPARE(enabled(), (QStringList{u"note"_s, u"gloss"_s, u"savejson"_s, u"savertf"_s}));
    m_window->state().runSearch(u"system"_s);
    QVERIFY(enabled().contains(u"reduce"_s));
}

void TestContentView::setAndGlossOpenTheirWindows()
{
    QTest::mouseClick(find<QPushButton>(u"setPredicate"_s), Qt::LeftButton);
    m_window->state().logger().setLogList(sampleEntries());
    clickRow(1);
    clickTool(u"gloss"_s);
    QCOMPARE(m_openedWindows, (QStringList{u"miniPredView"_s, u"textView"_s}));
    QCOMPARE(m_fake->defaults.string(u"selectText"_s), u"synchronised 3 of 4"_s);
}

void TestContentView::searchFromTheKeyboard()
{
    m_window->state().logger().setLogList(sampleEntries());
    find<EntryListView>(u"entries"_s)->setFocus();
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(m_window->focusWidget()->objectName(), u"search"_s);
    QTest::keyClicks(m_window->focusWidget(), u"SYNC"_s);
    QCOMPARE(rows().rowCount(), 4);
    QTest::keyClick(m_window->focusWidget(), Qt::Key_Return);
    QCOMPARE(rows().rowCount(), 1);
    QCOMPARE(m_window->windowTitle(), u"Tessel - SYNC"_s);
    QCOMPARE(find<QLabel>(u"count"_s)->text(), u"4 entries"_s);
}

void TestContentView::escapeEndsTheSearch()
{
    m_window->state().logger().setLogList(sampleEntries());
    type(u"search"_s, u"sync"_s);
    QTest::keyClick(find<QLineEdit>(u"search"_s), Qt::Key_Return);
    QCOMPARE(rows().rowCount(), 1);
    QTest::keyClick(find<QLineEdit>(u"search"_s), Qt::Key_Escape);
    QCOMPARE(rows().rowCount(), 4);
    QCOMPARE(find<QLineEdit>(u"search"_s)->text(), QString());
    QCOMPARE(m_window->windowTitle(), u"Tessel"_s);
    QVERIFY(m_window->isVisible());
}

void TestContentView::emptyResultShowsThePlaceholder()
{
    const auto* const placeholder = find<QWidget>(u"placeholder"_s);
    QVERIFY(!placeholder->isVisible());
    m_window->state().logger().setLogList(sampleEntries());
    find<QComboBox>(u"searchType"_s)->setCurrentIndex(2);
    type(u"search"_s, u"disk"_s);
    QTest::keyClick(find<QLineEdit>(u"search"_s), Qt::Key_Return);
    QVERIFY(placeholder->isVisible());
    QCOMPARE(find<QLabel>(u"placeholderTitle"_s)->text(), u"No entries found"_s);
    QCOMPARE(find<QLabel>(u"nothingFound"_s)->text(),
             u"No results found for \"disk\" in Senders"_s);
    find<QComboBox>(u"searchType"_s)->setCurrentIndex(0);
    QCOMPARE(find<QLabel>(u"nothingFound"_s)->text(),
             u"No results found for \"disk\" in Messages"_s);
    QTest::keyClick(find<QLineEdit>(u"search"_s), Qt::Key_Escape);
    QVERIFY(!placeholder->isVisible());
}

void TestContentView::copyPutsLinesOnTheClipboard()
{
    const QList<LogEntry> entries = sampleEntries();
    m_window->state().logger().setLogList(entries);
    QApplication::clipboard()->setText(u"before"_s);
    find<EntryListView>(u"entries"_s)->setFocus();
    QTest::keyClick(m_window->focusWidget(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), u"before"_s);
    QTest::keyClick(m_window->focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m_window->focusWidget(), Qt::Key_C, Qt::ControlModifier);
    QStringList lines;
    for (const LogEntry& entry : entries)
        lines.append(entry.plainTextLine());
    QCOMPARE(QApplication::clipboard()->text(), lines.join(u'\n'));
}

void TestContentView::copyInAFieldCopiesItsText()
{
    m_window->state().logger().setLogList(sampleEntries());
    clickRow(0);
    type(u"predicate"_s, u"typed"_s);
    find<QLineEdit>(u"predicate"_s)->selectAll();
    m_window->commands().copy->trigger();
    QCOMPARE(QApplication::clipboard()->text(), u"typed"_s);
}

void TestContentView::fullFieldsFollowToggleAndMenu()
{
    m_window->state().logger().setLogList({sampleLogMessage()});
    const auto line = [this] { return rows().index(0, 0).data(Qt::AccessibleTextRole).toString(); };
    QVERIFY(!line().contains(u"log message"_s));
    QTest::mouseClick(find<QCheckBox>(u"fullMode"_s), Qt::LeftButton, {}, {8, 10});
    QVERIFY(line().contains(u"log message"_s));
    QVERIFY(m_window->commands().fullFields->isChecked());
    m_window->commands().fullFields->trigger();
    QVERIFY(!find<QCheckBox>(u"fullMode"_s)->isChecked());
    QVERIFY(!line().contains(u"log message"_s));
    QVERIFY(!m_fake->defaults.boolean(u"fullMode"_s));
}

void TestContentView::drops_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("accepted");
    QTest::addRow("entry list") << u"list.tessel"_s << true;
    QTest::addRow("entry list in capitals") << u"LIST.TESSEL"_s << true;
    QTest::addRow("archive") << u"mac.logarchive"_s << true;
    QTest::addRow("plain folder") << u"folder"_s << false;
    QTest::addRow("other file") << u"list.json"_s << false;
    QTest::addRow("archive that is a file") << u"file.logarchive"_s << false;
}

void TestContentView::drops()
{
    QFETCH(QString, name);
    QFETCH(bool, accepted);
    const QDir folder(m_fake->folder.path());
    QVERIFY(folder.mkdir(u"mac.logarchive"_s) && folder.mkdir(u"folder"_s));
    for (const QString& file :
         {u"list.tessel"_s, u"LIST.TESSEL"_s, u"list.json"_s, u"file.logarchive"_s})
        QVERIFY(saveEntryList(sampleEntries(), folder.filePath(file)));
    const QUrl url = QUrl::fromLocalFile(folder.filePath(name));
    QCOMPARE(drop(url), accepted);
    QCOMPARE(rows().rowCount(), name.endsWith(u".tessel"_s, Qt::CaseInsensitive) ? 4 : 0);
    QCOMPARE(m_window->state().logger().archURL().has_value(),
             accepted && name.endsWith(u".logarchive"_s));
    QVERIFY(!drop(QUrl(u"https://example.org/list.tessel"_s)));
}

/// Fetch, search, reduce, note, save, read back in another window; compared entry for entry.
void TestContentView::journey()
{
    useDemonstration();
    find<QDateTimeEdit>(u"start"_s)
        ->setDateTime(m_fake->clock.currentTime.addSecs(-3600).toLocalTime());
    type(u"period"_s, u"4000"_s);
    type(u"maxCount"_s, u"500"_s);
    QTest::keyClick(m_window.get(), Qt::Key_G, Qt::ControlModifier);
    QCOMPARE(rows().rowCount(), 500);
    QCOMPARE(find<QLabel>(u"count"_s)->text(), u"500 entries"_s);
    QVERIFY(m_window->windowTitle().startsWith(u"Tessel 2024_03_07_"_s));

    find<QComboBox>(u"searchType"_s)->setCurrentIndex(1);
    type(u"search"_s, u"kernel"_s);
    QTest::keyClick(find<QLineEdit>(u"search"_s), Qt::Key_Return);
    const int found = rows().rowCount();
    QVERIFY(found > 2 && found < 500);
    clickTool(u"reduce"_s);
    QCOMPARE(find<QLabel>(u"count"_s)->text(), u"%1 entries"_s.arg(found));

    clickRow(1);
    type(u"note"_s, u"look"_s);
    clickTool(u"note"_s);
    QVERIFY(rows().index(1, 0).data(Qt::AccessibleTextRole).toString().endsWith(u"note: look"_s));

    const QString path = m_fake->folder.filePath(u"saved.tessel"_s);
    QTest::keyClick(m_window.get(), Qt::Key_S, Qt::ControlModifier);
    QVERIFY(m_fake->panels.saveRequests.first().proposedName.endsWith(u" - kernel.tessel"_s));
    m_fake->panels.confirm(path);
    const QList<LogEntry> saved = m_window->state().logger().logList();
    const QString title = m_window->state().logger().logDateStr();

    m_window = makeWindow();
    QTest::keyClick(m_window.get(), Qt::Key_O, Qt::ControlModifier);
    m_fake->panels.confirm(path);
    QCOMPARE(rows().rowCount(), found);
    const QList<LogEntry>& read = m_window->state().logger().logList();
    for (qsizetype i = 0; i < saved.size(); ++i)
        QCOMPARE(firstDifference(read.at(i), saved.at(i)), QString());
    QVERIFY(m_window->windowTitle().startsWith(title.left(title.size() - 2)));
    QVERIFY(m_fake->alerts.shown.isEmpty());
}

QTEST_MAIN(TestContentView)
#include "tst_contentview.moc"
