// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QAction;
class QToolBar;

/// How the user wants a toolbar.
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

    /// Those that stand in the toolbar, all shown.
    static ToolBarArrangement of(const QToolBar& bar);

    /// The form that is stored. What cannot be read, or is not known here, is left out; items of
    /// `original` that the stored form does not know follow at its end.
    QByteArray toBytes() const;
    static ToolBarArrangement fromBytes(const QByteArray& bytes,
                                        const ToolBarArrangement& original);
};

/// What an item is called where it stands outside the toolbar.
QString itemName(const QAction& item);
