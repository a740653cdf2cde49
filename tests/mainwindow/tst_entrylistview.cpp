// SPDX-License-Identifier: MIT
#include "mainwindow/entrylistview.h"
#include "mainwindow/logentrymodel.h"
#include "mainwindow/rowselection.h"
#include "support/sampleentries.h"
#include "support/testcase.h"

#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QList<LogEntry> every(const QList<LogEntry>& entries, int step)
{
    QList<LogEntry> some;
    for (qsizetype i = 0; i < entries.size(); i += step)
        some.append(entries.at(i));
    return some;
}

} // namespace

class TestEntryListView : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_list = std::make_unique<EntryListView>(m_model, 12);
        m_list->resize(600, 300);
        m_entries = manyEntries(1000);
        show(m_entries);
        m_list->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_list.get()));
    }

    void cleanup()
    {
        m_list.reset();
        m_model.show(m_entries); // the test's own list is gone
    }

    void userSelectsEntries()
    {
        QSignalSpy selected(m_list.get(), &EntryListView::entriesSelected);
        const auto last = [&selected] { return selected.last().first().value<QSet<QUuid>>(); };
        click(1);
        QCOMPARE(last(), QSet<QUuid>{m_entries.at(1).id});
        click(3, Qt::ShiftModifier);
        QCOMPARE(last(), (QSet<QUuid>{m_entries.at(1).id, m_entries.at(2).id, m_entries.at(3).id}));
        click(2, Qt::ControlModifier);
        QCOMPARE(last(), (QSet<QUuid>{m_entries.at(1).id, m_entries.at(3).id}));
        click(5);
        QCOMPARE(last(), QSet<QUuid>{m_entries.at(5).id});
        QTest::keySequence(m_list.get(), QKeySequence::SelectAll);
        QCOMPARE(last().size(), m_entries.size());
    }

    void selectionIsThatOfTheIdentities()
    {
        QSignalSpy selected(m_list.get(), &EntryListView::entriesSelected);
        const QSet<QUuid> ids{m_entries.at(4).id, m_entries.at(6).id, m_entries.at(7).id,
                              QUuid::createUuid()};
        show(m_entries, ids);
        QCOMPARE(selectedRows(), (QList<int>{4, 6, 7}));
        const QList<LogEntry> half = every(m_entries, 2);
        show(half, ids);
        QCOMPARE(selectedRows(), (QList<int>{2, 3}));
        show(m_entries, ids);
        QCOMPARE(selectedRows(), (QList<int>{4, 6, 7}));
        QVERIFY(selected.isEmpty());
    }

    void clickDropsEntriesThatAreNotShown()
    {
        const QList<LogEntry> half = every(m_entries, 2);
        show(half, {m_entries.at(1).id, m_entries.at(2).id});
        QSignalSpy selected(m_list.get(), &EntryListView::entriesSelected);
        click(3, Qt::ControlModifier);
        QCOMPARE(selected.last().first().value<QSet<QUuid>>(),
                 (QSet<QUuid>{m_entries.at(2).id, half.at(3).id}));
    }

    void entryInViewStaysInItsPlace()
    {
        m_list->scrollTo(m_model.index(500), QTreeView::PositionAtTop);
        const QUuid inView = m_entries.at(500).id;
        const int before = topOf(inView);
        m_list->rememberPlace();
        const QList<LogEntry> half = every(m_entries, 2);
        show(half);
        QCOMPARE(topOf(inView), before);
        m_list->rememberPlace();
        show(m_entries);
        QCOMPARE(topOf(inView), before);
        QVERIFY(m_list->currentIndex().isValid());
    }

    void selectedEntryInViewComesFirst()
    {
        m_list->scrollTo(m_model.index(500), QTreeView::PositionAtTop);
        const QSet<QUuid> selection{m_entries.at(504).id};
        click(504);
        const int before = topOf(m_entries.at(504).id);
        m_list->rememberPlace();
        // Every fourth entry: the first in view stays shown too, but moves.
        const QList<LogEntry> some = every(m_entries, 4);
        show(some, selection);
        QCOMPARE(topOf(m_entries.at(504).id), before);
        QCOMPARE(m_list->currentIndex().row(), 126);
    }

    void otherEntriesStartAtTheTop()
    {
        m_list->scrollToBottom();
        const QList<LogEntry> others = manyEntries(200);
        show(others);
        QCOMPARE(m_list->verticalScrollBar()->value(), 0);
        QCOMPARE(m_list->currentIndex().row(), 0);
        const QList<LogEntry> none;
        show(none);
        QVERIFY(!m_list->currentIndex().isValid());
    }

    void scrollsToTheEndOfTheLongestRowSeen()
    {
        QList<LogEntry> entries(500);
        entries[300].composedMessage = QString(2000, u'm');
        show(entries);
        m_list->viewport()->repaint();
        QTRY_COMPARE(m_list->horizontalScrollBar()->maximum(), 0);
        m_list->scrollTo(m_model.index(300));
        QTRY_VERIFY(m_list->horizontalScrollBar()->maximum() > 10'000);
        const int longest = m_list->horizontalScrollBar()->maximum();
        m_list->scrollToTop();
        m_list->viewport()->repaint();
        QCOMPARE(m_list->horizontalScrollBar()->maximum(), longest);
        m_list->horizontalScrollBar()->setValue(longest);
        show(m_entries);
        QTRY_VERIFY(m_list->horizontalScrollBar()->maximum() < longest);
    }

    void rowsAreTheSameWhereOthersReadFromTheRight()
    {
        const auto back = qScopeGuard([] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); });
        QList<LogEntry> entries{sampleLogMessage()};
        entries.front().composedMessage = u"(1) שלום, done."_s;
        show(entries);
        const QImage before = m_list->viewport()->grab().toImage();
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(m_list->viewport()->grab().toImage(), before);
        show(m_entries);
    }

    void typingDoesNotSearch()
    {
        click(0);
        QTest::keyClicks(m_list.get(), u"2024"_s);
        QCOMPARE(m_list->currentIndex().row(), 0);
    }

    void rowsKeepTheirPlaceUnderEdits()
    {
        m_list->scrollTo(m_model.index(500), QTreeView::PositionAtTop);
        click(503);
        const int position = m_list->verticalScrollBar()->value();
        m_model.setFullMode(true);
        m_model.entriesEdited();
        QCOMPARE(m_list->verticalScrollBar()->value(), position);
        QCOMPARE(selectedRows(), QList<int>{503});
    }

    void millionRowsAppearAtOnce()
    {
        const QList<LogEntry> million(1'000'000, sampleLogMessage());
        QElapsedTimer timer;
        timer.start();
        show(million);
        m_list->viewport()->repaint();
        m_list->scrollToBottom();
        m_list->viewport()->repaint();
        // A generous multiple of what it takes: work per row would take far longer.
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(m_list->visualRect(m_model.index(999'999)).top() < m_list->viewport()->height());
    }

    /// Against the toolkit's own, which is exact with few rows. Only those in view are asked of
    /// both.
    void selectionIsThatOfTheToolkit()
    {
        QItemSelectionModel toolkits(&m_model);
        QItemSelectionModel& ours = *m_list->selectionModel();
        m_list->viewport()->repaint();
        constexpr int rows = 8;
        QVERIFY(m_list->visualRect(m_model.index(rows)).bottom() < m_list->viewport()->height());
        QRandomGenerator random(1);
        using Model = QItemSelectionModel;
        const QList<Model::SelectionFlags> commands{Model::Select,
                                                    Model::Deselect,
                                                    Model::Toggle,
                                                    Model::ClearAndSelect,
                                                    Model::SelectCurrent,
                                                    Model::ToggleCurrent,
                                                    Model::Deselect | Model::Current,
                                                    Model::Clear,
                                                    Model::NoUpdate};
        for (int i = 0; i < 2000; ++i) {
            const auto command = commands.at(random.bounded(commands.size()));
            const int first = random.bounded(rows);
            const QItemSelection some(m_model.index(first),
                                      m_model.index(random.bounded(first, rows)));
            ours.select(some, command);
            toolkits.select(some, command);
            for (int row = 0; row < rows; ++row) {
                const bool isSelected = toolkits.isSelected(m_model.index(row));
                QCOMPARE(ours.isSelected(m_model.index(row)), isSelected);
                QCOMPARE(m_list->selection().rows().testBit(row), isSelected);
            }
        }
    }

    void everySecondOfManyRowsIsSelectedAtOnce()
    {
        const QList<LogEntry> many = manyEntries(200'000);
        QSet<QUuid> ids;
        for (const LogEntry& entry : every(many, 2))
            ids.insert(entry.id);
        QElapsedTimer timer;
        timer.start();
        show(many, ids);
        QSignalSpy selected(m_list.get(), &EntryListView::entriesSelected);
        click(2, Qt::ControlModifier);
        click(3, Qt::ControlModifier);
        QCOMPARE(selected.last().first().value<QSet<QUuid>>().size(), ids.size());
        m_list->scrollTo(m_model.index(150'000), QTreeView::PositionAtTop);
        click(150'001, Qt::ControlModifier);
        click(150'000, Qt::ControlModifier);
        QCOMPARE(selected.last().first().value<QSet<QUuid>>().size(), ids.size());
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    void show(const QList<LogEntry>& entries, const QSet<QUuid>& selection = {})
    {
        m_model.show(entries);
        m_list->restorePlace(selection);
    }

    QList<int> selectedRows() const
    {
        QList<int> rows;
        forEachSetBit(m_list->selection().rows(), [&rows](int row) { rows.append(row); });
        return rows;
    }

    /// How far below the list's top edge the entry stands; -1 when it is not shown.
    int topOf(const QUuid& id) const
    {
        for (int row = 0; row < m_model.rowCount(); ++row) {
            if (m_model.entry(row).id == id)
                return m_list->visualRect(m_model.index(row)).top();
        }
        return -1;
    }

    void click(int row, Qt::KeyboardModifiers modifiers = {})
    {
        const QRect rect = m_list->visualRect(m_model.index(row));
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, modifiers,
                          QPoint(20, rect.center().y()));
    }

    QList<LogEntry> m_entries;
    LogEntryModel m_model;
    std::unique_ptr<EntryListView> m_list;
};

TESSEL_TEST(TestEntryListView)
#include "tst_entrylistview.moc"
