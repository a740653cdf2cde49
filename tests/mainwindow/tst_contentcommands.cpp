// SPDX-License-Identifier: MIT
#include "model/entrylistfile.h"
#include "support/sampleentries.h"
#include "support/testcase.h"
#include "windowfixture.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>

using namespace Qt::StringLiterals;

/// The main window's commands, given by keys, clicks and drops.
class TestContentCommands : public TestCase, private WindowFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        openWindow();
    }

    void cleanup() { closeWindow(); }

    void searchFromTheKeyboard()
    {
        m_window->state().logger().setLogList(sampleEntries());
        list().setFocus();
        QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(m_window->focusWidget()->objectName(), u"search"_s);
        QTest::keyClicks(m_window->focusWidget(), u"SYNC"_s);
        QCOMPARE(rowCount(), 4);
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Return);
        QCOMPARE(rowCount(), 1);
        QCOMPARE(m_window->windowTitle(), u"Tessel - SYNC"_s);
        QCOMPARE(find<QLabel>(u"count"_s)->text(), u"4 entries"_s);
    }

    void escapeEndsTheSearch()
    {
        m_window->state().logger().setLogList(sampleEntries());
        type(u"search"_s, u"sync"_s);
        press(u"search"_s, Qt::Key_Return);
        QCOMPARE(rowCount(), 1);
        press(u"search"_s, Qt::Key_Escape);
        QCOMPARE(rowCount(), 4);
        QCOMPARE(find<QLineEdit>(u"search"_s)->text(), QString());
        QCOMPARE(m_window->windowTitle(), u"Tessel"_s);
        QVERIFY(m_window->isVisible());
    }

    void emptyResultShowsThePlaceholder()
    {
        const auto* const placeholder = find<QWidget>(u"placeholder"_s);
        QVERIFY(!placeholder->isVisible());
        m_window->state().logger().setLogList(sampleEntries());
        find<QComboBox>(u"searchType"_s)->setCurrentIndex(2);
        type(u"search"_s, u"disk"_s);
        press(u"search"_s, Qt::Key_Return);
        QVERIFY(placeholder->isVisible());
        QCOMPARE(find<QLabel>(u"placeholderTitle"_s)->text(), u"No entries found"_s);
        QCOMPARE(find<QLabel>(u"nothingFound"_s)->text(),
                 u"No results found for \"disk\" in Senders"_s);
        find<QComboBox>(u"searchType"_s)->setCurrentIndex(0);
        QCOMPARE(find<QLabel>(u"nothingFound"_s)->text(),
                 u"No results found for \"disk\" in Messages"_s);
        press(u"search"_s, Qt::Key_Escape);
        QVERIFY(!placeholder->isVisible());
    }

    void commandsWithNothingToActOnAreDisabled()
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

    void fetchUsesTheShownStart()
    {
        auto* const start = find<QDateTimeEdit>(u"start"_s);
        start->setDateTime(QDateTime(QDate(2024, 3, 7), QTime(14, 13)));
        start->setFocus();
        start->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClicks(start, u"5"_s);
        m_window->commands().getLog->trigger();
        QCOMPARE(start->text(), u"2024-03-07 14:05"_s);
        QCOMPARE(m_window->state().logger().theDate().time(), QTime(14, 5));
        QApplication::clipboard()->setText(u"2024-03-07 14:06:09.5+0000"_s);
        QTest::keySequence(start, QKeySequence::Paste);
        QCOMPARE(find<QLineEdit>(u"seconds"_s)->text(), u"09"_s);
    }

    void fetchCanBeClosed()
    {
        useDemonstration();
        QPointer<ContentView> window = m_window.release();
        window->setAttribute(Qt::WA_DeleteOnClose);
        ContentState& state = window->state();
        state.theStartDate = m_fake->clock.currentTime.addSecs(-3600);
        state.period = u"4000"_s;
        state.maxCount = u"100000"_s;
        connect(&state.logger(), &Logger::logListChanged, window, [&window] {
            if (window->commands().saveJSON->isEnabled() || window->commands().getLog->isEnabled())
                return;
            window->close();
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        });
        qsizetype fetched = -1;
        connect(&state, &ContentState::fetchEnds, this,
                [&] { fetched = state.logger().logList().size(); });
        state.getLog();
        QVERIFY(window);
        QVERIFY(!window->isVisible());
        QVERIFY(fetched >= 0 && fetched < 1000);
        QTRY_VERIFY(!window);
    }

    void setAndGlossOpenTheirWindows()
    {
        QTest::mouseClick(find<QPushButton>(u"setPredicate"_s), Qt::LeftButton);
        m_window->state().logger().setLogList(sampleEntries());
        clickRow(1);
        clickTool(u"gloss"_s);
        QCOMPARE(m_openedWindows, (QStringList{u"miniPredView"_s, u"textView"_s}));
        QCOMPARE(m_fake->defaults.string(u"selectText"_s), u"synchronised 3 of 4"_s);
    }

    void copyPutsLinesOnTheClipboard()
    {
        const QList<LogEntry> entries = sampleEntries();
        m_window->state().logger().setLogList(entries);
        QApplication::clipboard()->setText(u"before"_s);
        list().setFocus();
        QTest::keyClick(m_window->focusWidget(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"before"_s);
        QTest::keyClick(m_window->focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(m_window->focusWidget(), Qt::Key_C, Qt::ControlModifier);
        QStringList lines;
        for (const LogEntry& entry : entries)
            lines.append(entry.plainTextLine());
        QCOMPARE(QApplication::clipboard()->text(), lines.join(u'\n'));
    }

    void copyInAFieldCopiesItsText()
    {
        m_window->state().logger().setLogList(sampleEntries());
        clickRow(0);
        type(u"predicate"_s, u"typed"_s);
        find<QLineEdit>(u"predicate"_s)->selectAll();
        m_window->commands().copy->trigger();
        QCOMPARE(QApplication::clipboard()->text(), u"typed"_s);
    }

    void keysSetTheTextSize_data()
    {
        QTest::addColumn<QList<QKeySequence>>("keys");
        QTest::addColumn<int>("times");
        QTest::addColumn<double>("size");
        using Keys = QList<QKeySequence>;
        QTest::addRow("larger") << Keys{u"Ctrl++"_s, u"Ctrl+="_s} << 1 << 14.0;
        QTest::addRow("largest") << Keys{u"Ctrl++"_s} << 50 << 36.0;
        QTest::addRow("smaller") << Keys{u"Ctrl+-"_s} << 2 << 10.0;
        QTest::addRow("smallest") << Keys{u"Ctrl+-"_s} << 50 << 6.0;
        QTest::addRow("normal again") << Keys{u"Ctrl+-"_s, u"Ctrl+-"_s, u"Ctrl+0"_s} << 1 << 12.0;
    }

    void keysSetTheTextSize()
    {
        QFETCH(QList<QKeySequence>, keys);
        QFETCH(int, times);
        m_window->state().logger().setLogList(sampleEntries());
        const int before = list().visualRect(list().model()->index(0, 0)).height();
        for (int i = 0; i < times; ++i) {
            for (const QKeySequence& key : keys)
                QTest::keySequence(m_window.get(), key);
        }
        QTEST(m_window->state().theFontSize.value(), "size");
        const int after = list().visualRect(list().model()->index(0, 0)).height();
        const double size = m_window->state().theFontSize;
        QCOMPARE(after > before, size > 12);
        QCOMPARE(after < before, size < 12);
    }

    void drops_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accepted");
        QTest::addRow("entry list") << u"list.tessel"_s << true;
        QTest::addRow("entry list in capitals") << u"LIST.TESSEL"_s << true;
        QTest::addRow("archive") << u"mac.logarchive"_s << true;
        QTest::addRow("plain folder") << u"folder"_s << false;
        QTest::addRow("other file") << u"list.json"_s << false;
        QTest::addRow("archive that is a file") << u"file.logarchive"_s << true;
    }

    void drops()
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
        QCOMPARE(rowCount(), name.endsWith(u".tessel"_s, Qt::CaseInsensitive) ? 4 : 0);
        QCOMPARE(m_window->state().logger().archURL().has_value(), name == u"mac.logarchive"_s);
        QCOMPARE(m_fake->alerts.shown.size(), name == u"file.logarchive"_s ? 1 : 0);
        QVERIFY(!drop(QUrl(u"https://example.org/list.tessel"_s)));
    }

    /// Fetch, search, reduce, note, save, read back in another window; compared entry for entry.
    void journey()
    {
        useDemonstration();
        find<QDateTimeEdit>(u"start"_s)
            ->setDateTime(m_fake->clock.currentTime.addSecs(-3600).toLocalTime());
        type(u"period"_s, u"4000"_s);
        type(u"maxCount"_s, u"500"_s);
        QTest::keyClick(m_window.get(), Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(rowCount(), 500);
        QCOMPARE(find<QLabel>(u"count"_s)->text(), u"500 entries"_s);
        QVERIFY(m_window->windowTitle().startsWith(u"Tessel 2024_03_07_"_s));

        find<QComboBox>(u"searchType"_s)->setCurrentIndex(1);
        type(u"search"_s, u"kernel"_s);
        press(u"search"_s, Qt::Key_Return);
        const int found = rowCount();
        QVERIFY(found > 2 && found < 500);
        clickTool(u"reduce"_s);
        QCOMPARE(find<QLabel>(u"count"_s)->text(), u"%1 entries"_s.arg(found));

        clickRow(1);
        type(u"note"_s, u"look"_s);
        clickTool(u"note"_s);
        QVERIFY(line(1).endsWith(u"note: look"_s));

        const QString path = m_fake->folder.filePath(u"saved.tessel"_s);
        QTest::keyClick(m_window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(m_fake->panels.saveRequests.first().proposedName.endsWith(u" - kernel.tessel"_s));
        m_fake->panels.confirm(path);
        const QList<LogEntry> saved = m_window->state().logger().logList();
        const QString title = m_window->state().logger().logDateStr();

        m_window.reset();
        openWindow();
        QTest::keyClick(m_window.get(), Qt::Key_O, Qt::ControlModifier);
        m_fake->panels.confirm(path);
        QCOMPARE(rowCount(), found);
        const QList<LogEntry>& read = m_window->state().logger().logList();
        for (qsizetype i = 0; i < saved.size(); ++i)
            QCOMPARE(firstDifference(read.at(i), saved.at(i)), QString());
        QVERIFY(m_window->windowTitle().startsWith(title.left(title.size() - 2)));
        QVERIFY(m_fake->alerts.shown.isEmpty());
    }

private:
    bool drop(const QUrl& url) const
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
        QCoreApplication::processEvents();
        return true;
    }
};

TESSEL_TEST(TestContentCommands)
#include "tst_contentcommands.moc"
