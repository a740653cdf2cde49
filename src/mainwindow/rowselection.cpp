// SPDX-License-Identifier: MIT
#include "mainwindow/rowselection.h"

#include <QSignalBlocker>

#include <algorithm>

RowSelection::RowSelection(QAbstractItemModel* model, QObject* parent)
    : QItemSelectionModel(model, parent)
    , m_rows(model->rowCount())
    , m_before(m_rows)
{
}

void RowSelection::setRows(const QBitArray& rows)
{
    m_rows = m_before = rows;
    passOnRowsInView();
}

void RowSelection::setRowsInView(int first, int last)
{
    if (first == m_first && last == m_last)
        return;
    m_first = first;
    m_last = last;
    const QSignalBlocker scrollingIsNoChange(this);
    passOnRowsInView();
}

void RowSelection::select(const QItemSelection& selection, SelectionFlags command)
{
    if (command == NoUpdate)
        return;
    const QBitArray old = m_rows;
    if (command & Clear)
        m_before.fill(false);
    else if (!(command & Current))
        m_before = m_rows;
    m_rows = m_before;
    for (const QItemSelectionRange& range : selection) {
        if (command & Toggle) {
            for (int row = range.top(); row <= range.bottom(); ++row)
                m_rows.toggleBit(row);
        } else if (command & (Select | Deselect)) {
            m_rows.fill(bool(command & Select), range.top(), range.bottom() + 1);
        }
    }
    if (m_rows == old)
        return;
    passOnRowsInView();
    Q_EMIT rowsToggled(m_rows ^ old);
}

void RowSelection::reset()
{
    m_rows = m_before = QBitArray(model()->rowCount());
    m_first = 0;
    m_last = -1;
    QItemSelectionModel::reset();
}

void RowSelection::passOnRowsInView()
{
    QItemSelection inView;
    const int end = std::min(m_last + 1, static_cast<int>(m_rows.size()));
    for (int row = m_first; row < end; ++row) {
        if (m_rows.testBit(row))
            inView.select(model()->index(row, 0), model()->index(row, 0));
    }
    QItemSelectionModel::select(inView, ClearAndSelect);
}
