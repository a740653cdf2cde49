// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/rowlayout.h"

#include <QStyledItemDelegate>

/// Paints the rows of a LogEntryModel, each text in its field's colour.
class MessageRowDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    MessageRowDelegate(const QFont& font, qreal spacing, QObject* parent = nullptr);

    void setFont(const QFont& font, qreal spacing) { m_layout = RowLayout(font, spacing); }
    const RowLayout& layout() const { return m_layout; }

    void paint(QPainter* painter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The size of the row's texts, so that a view can scroll to their end.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    RowLayout m_layout;
};
