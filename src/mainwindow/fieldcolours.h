// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/messagerow.h"

#include <QPalette>

/// The tones of the list in one appearance. Each text tone reads well (a contrast of 4.5:1 and
/// more) on a plain, an alternate and a selected row. Plain text is in the palette's colour; in a
/// palette of high contrast all text is.
class FieldColours
{
public:
    /// The tones that suit the palette's own base colour.
    explicit FieldColours(const QPalette& palette);

    QColor operator[](FieldColour colour) const;
    QColor selectedRow() const;
    /// The mark of a selected row, and the frame of the current one.
    QColor accent() const;
    /// Marks that stand for something else than text, such as a line feed.
    QColor dim() const;

private:
    bool m_dark;
    bool m_highContrast;
    QColor m_base;
    QColor m_text;
};
