// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/messagerow.h"

#include <QFont>
#include <QFontMetricsF>
#include <QList>

/// A run of text in one tone, placed along a row's line.
struct RowRun
{
    qreal x = 0;
    QString text;
    FieldColour colour = FieldColour::Normal;
    enum Kind {
        Letters,
        Emoji,    ///< drawn in the emoji font
        BreakMark ///< stands for a line break
    } kind = Letters;
};

/// Places the texts of rows, in one font. All rows have the same height.
class RowLayout
{
public:
    RowLayout(const QFont& font, qreal spacing);

    const QFont& font(RowRun::Kind kind) const
    {
        return kind == RowRun::Emoji ? m_emojiFont : m_font;
    }
    /// The height of a row, enough for the font and for every marker.
    qreal height() const { return m_height; }
    /// The distance from the top of a row to the base line of its text.
    qreal baseLine() const { return m_baseLine; }

    /// The runs that begin before `end`. A text that goes beyond it is cut.
    QList<RowRun> runs(const MessageRow& row, qreal end) const;
    /// The width of the whole row. Only extremely long texts are cut.
    qreal width(const MessageRow& row) const;

private:
    qreal advance(const QString& text, RowRun::Kind kind) const;
    template <typename Place>
    qreal walk(const MessageRow& row, qreal end, Place place) const;

    QFont m_font;
    QFont m_emojiFont;
    QFontMetricsF m_metrics;
    QFontMetricsF m_emojiMetrics;
    qreal m_cell; ///< width of each printable ASCII character; 0 when they differ
    qreal m_spacing;
    qreal m_height = 0;
    qreal m_baseLine = 0;
};
