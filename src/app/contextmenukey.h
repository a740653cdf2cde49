// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Opens context menus by Shift+F10 too, for keyboards without a Menu key: the toolkit knows the
/// latter alone. Works for the whole application.
class ContextMenuKey final : public QObject
{
    Q_OBJECT

public:
    explicit ContextMenuKey(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
