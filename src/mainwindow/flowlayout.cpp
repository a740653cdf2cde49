// SPDX-License-Identifier: MIT
#include "mainwindow/flowlayout.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

FlowLayout::FlowLayout(int horizontalSpacing, int verticalSpacing)
    : m_horizontalSpacing(horizontalSpacing)
    , m_verticalSpacing(verticalSpacing)
{
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
}

int FlowLayout::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (itemAt(index) == nullptr)
        return nullptr;
    QLayoutItem* const item = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

std::vector<FlowLayout::Line> FlowLayout::lines(int width) const
{
    std::vector<Line> lines;
    int x = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (lines.empty() || x + size.width() > width) {
            lines.emplace_back();
            x = 0;
        }
        lines.back().items.push_back(item.get());
        lines.back().height = std::max(lines.back().height, size.height());
        x += size.width() + m_horizontalSpacing;
    }
    return lines;
}

int FlowLayout::height(const std::vector<Line>& lines) const
{
    int height = -m_verticalSpacing;
    for (const Line& line : lines)
        height += line.height + m_verticalSpacing;
    return std::max(height, 0);
}

int FlowLayout::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    return height(lines(width - margins.left() - margins.right())) + margins.top()
           + margins.bottom();
}

QSize FlowLayout::sizeHint() const
{
    int width = -m_horizontalSpacing;
    int height = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        width += item->sizeHint().width() + m_horizontalSpacing;
        height = std::max(height, item->sizeHint().height());
    }
    return QSize(std::max(width, 0), height).grownBy(contentsMargins());
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const auto& item : m_items) {
        if (!item->isEmpty())
            size = size.expandedTo(item->sizeHint());
    }
    return size.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QRect area = rect.marginsRemoved(contentsMargins());
    const Qt::LayoutDirection direction =
        parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    int y = area.top();
    for (const Line& line : lines(area.width())) {
        int x = area.left();
        for (QLayoutItem* item : line.items) {
            const QSize size = item->sizeHint();
            const QRect place(QPoint(x, y + (line.height - size.height()) / 2), size);
            item->setGeometry(QStyle::visualRect(direction, area, place));
            x += size.width() + m_horizontalSpacing;
        }
        y += line.height + m_verticalSpacing;
    }
}
