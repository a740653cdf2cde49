// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/messagerow.h"

#include <QPalette>

/// The colours of the list in one appearance. Each text colour has a contrast of at least 4.5:1 on
/// plain, alternate and selected rows. Plain text has the palette's colour; with a palette of high
/// contrast, all text has.
class FieldColours
{
public:
    /// The colours for the palette's base colour, dark or light.
    explicit FieldColours(const QPalette& palette);

    QColor operator[](FieldColour colour) const;
    QColor selectedRow() const;
    /// The colour of the bar in a selected row and of the frame around the current row.
    QColor accent() const;
    /// The colour of marks that are not part of the text, such as for a line feed.
    QColor dim() const;

private:
    bool m_dark;
    bool m_highContrast;
    QColor m_base;
    QColor m_text;
};
