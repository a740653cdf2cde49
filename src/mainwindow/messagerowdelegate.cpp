// SPDX-License-Identifier: MIT
#include "mainwindow/messagerowdelegate.h"

#include "mainwindow/fieldcolours.h"
#include "mainwindow/logentrymodel.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr int margin = 8;       ///< left and right of a row's texts
constexpr int selectionBar = 3; ///< width of the bar that marks a selected row beside its colour

const LogEntryModel& modelOf(const QModelIndex& index)
{
    return *static_cast<const LogEntryModel*>(index.model());
}

void paintBackground(QPainter& painter,
                     const QStyleOptionViewItem& option,
                     const FieldColours& colours)
{
    if (option.state & QStyle::State_Selected) {
        painter.fillRect(option.rect, colours.selectedRow());
        QRect bar = option.rect;
        bar.setWidth(selectionBar);
        painter.fillRect(bar, colours.accent());
    } else if (option.features & QStyleOptionViewItem::Alternate) {
        painter.fillRect(option.rect, option.palette.alternateBase());
    }
}

void paintFocusFrame(QPainter& painter,
                     const QStyleOptionViewItem& option,
                     const FieldColours& colours)
{
    if (!(option.state & QStyle::State_HasFocus))
        return;
    painter.setPen(colours.accent());
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

} // namespace

MessageRowDelegate::MessageRowDelegate(const QFont& font, qreal spacing, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_layout(font, spacing)
{
}

void MessageRowDelegate::paint(QPainter* painter,
                               const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const FieldColours colours(option.palette);
    painter->save();
    painter->setLayoutDirection(Qt::LeftToRight); // as the log is written, in every language
    paintBackground(*painter, option, colours);

    const qreal left = option.rect.left() + margin;
    const qreal right =
        painter->hasClipping() ? painter->clipBoundingRect().right() : option.rect.right();
    const qreal baseLine =
        option.rect.top() + (option.rect.height() - m_layout.height()) / 2 + m_layout.baseLine();
    for (const RowRun& run : m_layout.runs(modelOf(index).messageRow(index.row()), right - left)) {
        painter->setFont(m_layout.font(run.kind));
        painter->setPen(run.kind == RowRun::BreakMark ? colours.dim() : colours[run.colour]);
        painter->drawText(QPointF(left + run.x, baseLine), run.text);
    }
    paintFocusFrame(*painter, option, colours);
    painter->restore();
}

QSize MessageRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const qreal width = m_layout.width(modelOf(index).messageRow(index.row()));
    return {static_cast<int>(std::ceil(width)) + 2 * margin, static_cast<int>(m_layout.height())};
}
