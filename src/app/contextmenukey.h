// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Opens context menus with Shift+F10 in the whole application, for keyboards without a Menu key.
/// The toolkit supports the Menu key only.
class ContextMenuKey final : public QObject
{
    Q_OBJECT

public:
    explicit ContextMenuKey(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
