// SPDX-License-Identifier: MIT
#include "mainwindow/entrylistview.h"

#include "mainwindow/logentrymodel.h"
#include "mainwindow/messagerowdelegate.h"
#include "mainwindow/rowselection.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHash>
#include <QHeaderView>
#include <QPaintEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace {

QFont rowFont(qreal pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(pointSize);
    return font;
}

qreal defaultSpacing(const QWidget& widget)
{
    return widget.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, &widget);
}

} // namespace

EntryListView::EntryListView(LogEntryModel& model, qreal pointSize, QWidget* parent)
    : QTreeView(parent)
    , m_model(model)
    , m_pointSize(pointSize)
    , m_delegate(new MessageRowDelegate(rowFont(m_pointSize), defaultSpacing(*this), this))
    , m_selection(new RowSelection(&model, this))
{
    setLayoutDirection(Qt::LeftToRight); // as the log is written, in every language
    // A tree with one column: unlike a list view, it takes its width from the column and does not
    // measure every row.
    setHeaderHidden(true);
    header()->setMinimumSectionSize(0);
    header()->setStretchLastSection(false);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
    viewport()->setAttribute(Qt::WA_Hover, false); // rows do not react to the pointer
    setItemDelegate(m_delegate);
    setModel(&model);
    const QItemSelectionModel* const toolkits = selectionModel();
    setSelectionModel(m_selection);
    delete toolkits;
    connect(m_selection, &RowSelection::rowsToggled, this, &EntryListView::followSelection);
    connect(&model, &QAbstractItemModel::dataChanged, this, [this] {
        m_widestSeen = 0;
        viewport()->update();
    });
    connect(&model, &QAbstractItemModel::modelReset, this, [this] {
        m_widestSeen = 0;
        applyWidth();
    });
    updateType();
}

void EntryListView::setPointSize(qreal size)
{
    m_pointSize = size;
    updateType();
}

void EntryListView::updateType()
{
    m_delegate->setFont(rowFont(m_pointSize), defaultSpacing(*this));
    horizontalScrollBar()->setSingleStep(static_cast<int>(m_delegate->layout().height()));
    m_widestSeen = 0;
    scheduleDelayedItemsLayout();
}

void EntryListView::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        updateType();
}

/// Does nothing: it would search the texts of a million rows at each key. There is a search field.
void EntryListView::keyboardSearch(const QString&)
{
}

void EntryListView::followSelection(const QBitArray& toggled)
{
    forEachSetBit(toggled, [this](int row) {
        const QUuid& id = m_model.entry(row).id;
        if (m_selection->rows().testBit(row))
            m_selectedIds.insert(id);
        else
            m_selectedIds.remove(id);
    });
    Q_EMIT entriesSelected(m_selectedIds);
}

void EntryListView::rememberPlace()
{
    m_anchors.clear();
    const QModelIndex top = indexAt({0, 0});
    if (!top.isValid())
        return;
    const int bottom = viewport()->height();
    QList<Anchor> others;
    for (QModelIndex index = top; index.isValid(); index = indexBelow(index)) {
        const QRect rect = visualRect(index);
        if (rect.top() >= bottom)
            break;
        const bool isSelected = m_selection->rows().testBit(index.row());
        (isSelected ? m_anchors : others).append({m_model.entry(index.row()).id, rect.top()});
    }
    m_anchors += others;
}

void EntryListView::restorePlace(const QSet<QUuid>& selection)
{
    selectEntries(selection);
    const auto [row, offset] = placeOfBestAnchor();
    m_anchors.clear();
    // Assistive tools expect a current row in a list that has rows.
    const QModelIndex current = m_model.index(std::max(row, 0));
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    executeDelayedItemsLayout();
    if (row < 0)
        return scrollToTop();
    scrollTo(current, PositionAtTop);
    verticalScrollBar()->setValue(verticalScrollBar()->value() - offset);
}

void EntryListView::selectEntries(const QSet<QUuid>& ids)
{
    m_selectedIds.clear();
    if (ids.isEmpty())
        return;
    QBitArray rows(m_model.rowCount());
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const QUuid& id = m_model.entry(row).id;
        if (!ids.contains(id))
            continue;
        m_selectedIds.insert(id);
        rows.setBit(row);
    }
    m_selection->setRows(rows);
}

std::pair<int, int> EntryListView::placeOfBestAnchor() const
{
    QHash<QUuid, qsizetype> ranks;
    for (qsizetype i = m_anchors.size() - 1; i >= 0; --i)
        ranks.insert(m_anchors.at(i).id, i);
    qsizetype best = m_anchors.size();
    int bestRow = -1;
    for (int row = 0; row < m_model.rowCount() && best > 0; ++row) {
        const qsizetype rank = ranks.value(m_model.entry(row).id, best);
        if (rank >= best)
            continue;
        best = rank;
        bestRow = row;
    }
    return {bestRow, bestRow < 0 ? 0 : m_anchors.at(best).offset};
}

void EntryListView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    seeWidths(event->rect());
}

void EntryListView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    applyWidth();
}

bool EntryListView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Paint || event->type() == QEvent::MouseButtonPress) {
        const int first = indexAt({0, 0}).row();
        const int last = indexAt({0, viewport()->height() - 1}).row();
        m_selection->setRowsInView(std::max(first, 0), last < 0 ? m_model.rowCount() - 1 : last);
    }
    return QTreeView::viewportEvent(event);
}

void EntryListView::seeWidths(const QRect& painted)
{
    int widest = m_widestSeen;
    for (QModelIndex index = indexAt({0, painted.top()}); index.isValid();
         index = indexBelow(index)) {
        if (visualRect(index).top() > painted.bottom())
            break;
        widest = std::max(widest, sizeHintForIndex(index).width());
    }
    if (widest == m_widestSeen)
        return;
    m_widestSeen = widest;
    QMetaObject::invokeMethod(this, &EntryListView::applyWidth, Qt::QueuedConnection);
}

void EntryListView::applyWidth()
{
    const int width = std::max(m_widestSeen, viewport()->width());
    if (columnWidth(0) != width)
        setColumnWidth(0, width);
}
