// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>

#include <memory>
#include <vector>

/// Places items side by side, as many as fit into a line, and centres each line.
class FlowLayout final : public QLayout
{
    Q_OBJECT

public:
    FlowLayout(int horizontalSpacing, int verticalSpacing);
    ~FlowLayout() override;
    Q_DISABLE_COPY_MOVE(FlowLayout)

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    struct Line
    {
        std::vector<QLayoutItem*> items;
        int height = 0;
    };

    std::vector<Line> lines(int width) const;
    int height(const std::vector<Line>& lines) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
    int m_horizontalSpacing;
    int m_verticalSpacing;
};
