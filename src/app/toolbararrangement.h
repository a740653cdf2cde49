// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QAction;
class QToolBar;

/// The user's arrangement of a toolbar.
struct ToolBarArrangement
{
    struct Item
    {
        QString identifier;
        bool shown = true;

        bool operator==(const Item&) const = default;
    };

    QList<Item> items; ///< in their order
    Qt::ToolButtonStyle style = Qt::ToolButtonTextUnderIcon;
    bool visible = true; ///< the toolbar itself

    bool operator==(const ToolBarArrangement&) const = default;

    /// The arrangement with all items of the toolbar shown.
    static ToolBarArrangement of(const QToolBar& bar);

    /// Reads the stored form. Unreadable and unknown items are left out; items of `original` that
    /// the stored form does not have are added at the end.
    QByteArray toBytes() const;
    static ToolBarArrangement fromBytes(const QByteArray& bytes,
                                        const ToolBarArrangement& original);
};

/// The name of an item outside the toolbar.
QString itemName(const QAction& item);
